// The printed ticket's lines: 40 columns, the unit price ending at 32 and the
// line total at 39.
#include "pos/ticket_item.h"
#include "pos/ticket_print.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

namespace {

using namespace vel::ticket;

TEST(TicketPrint, TwoLinesForAnArticle) {
    const QStringList l = LineasArticulo(Entrada("MAR500", "MARTILLO CARPINTERO 500G", "21", "2", "25.00"));
    ASSERT_EQ(l.size(), 2);
    EXPECT_EQ(l[0], "  MARTILLO CARPINTERO 500G" + vb::Space(15) + " ");
    EXPECT_EQ(l[1], QStringLiteral("  MAR500       ") + vb::Space(7) + "2" + vb::Space(4) + "12.50" + vb::Space(2) +
                        "25.00");
    // The unit price ends at column 32, the total at 39.
    EXPECT_EQ(l[1].mid(27, 5), QStringLiteral("12.50"));
    EXPECT_EQ(l[1].size(), 39);
    EXPECT_TRUE(l[1].endsWith(QStringLiteral("25.00")));
}

TEST(TicketPrint, TheDescriptionIsCutAt39Characters) {
    const QString larga = QStringLiteral("ABCDEFGHIJ").repeated(5);
    const QStringList l = LineasArticulo(Entrada("R", larga, "21", "1", "1.00"));
    EXPECT_EQ(l[0], "  " + larga.left(39) + " ");
    EXPECT_EQ(l[0].size(), 42);
}

// A total of seven characters runs into the unit price: the columns hold, the
// blank between them goes.
TEST(TicketPrint, ColumnsHoldForLongFigures) {
    const QStringList l = LineasArticulo(Entrada("8410000000042", "X", "4", "12", "1234.56"));
    EXPECT_EQ(l[1], QStringLiteral("  8410000000042       12") + vb::Space(2) + "102.88" + "1234.56");
    EXPECT_EQ(l[1].mid(26, 6), QStringLiteral("102.88"));
    EXPECT_EQ(l[1].size(), 39);
}

// The units take three columns: a thousand units print as 100.
TEST(TicketPrint, UnitsHaveThreeColumns) {
    const QStringList l = LineasArticulo(Entrada("R", "X", "21", "1000", "120.00"));
    EXPECT_EQ(l[1].mid(22, 3), QStringLiteral("100"));
    EXPECT_EQ(l[1].mid(28, 4), QStringLiteral("0.12"));
}

// Units typed as "2.50" print as the number 2.5.
TEST(TicketPrint, UnitsPrintAsTheirNumber) {
    const QStringList l = LineasArticulo(Entrada("R", "X", "21", "2.50", "5.00"));
    EXPECT_EQ(l[1].mid(22, 3), QStringLiteral("2.5"));
}

TEST(TicketPrint, DateNumberAndTitles) {
    EXPECT_EQ(LineaFecha("21/11/2026", "10:15:30", "1 /OPERADOR"),
              QStringLiteral("  21/11/2026    10:15:30    1 /OPERADOR"));
    EXPECT_EQ(LineaNumero("1 /CENTRAL", "000001"), QStringLiteral("  Nº: 1 /TI/000001"));
    EXPECT_EQ(LineaTitulos(), QStringLiteral("  Referencia          Uni  Importe  Total"));
}

// Both closing words are 21 characters: nine blanks of margin.
TEST(TicketPrint, TheClosingLinesHaveNineBlanks) {
    EXPECT_EQ(Centrado("-+ I.V.A. INCLUIDO +-"), vb::Space(9) + "-+ I.V.A. INCLUIDO +-");
    EXPECT_EQ(Centrado("GRACIAS POR SU VISITA"), vb::Space(9) + "GRACIAS POR SU VISITA");
    EXPECT_EQ(Centrado("1234"), vb::Space(18) + "1234");
    EXPECT_EQ(Centrado("12345"), vb::Space(17) + "12345");
}

TEST(TicketPrint, TotalLine) {
    EXPECT_EQ(LineaTotal("30.20"), vb::Space(20) + "TOTAL: 30.20");
}

} // namespace

// The ticket's lines as ListTicket holds them: 80 fixed columns built by
// cutting, read back by position.
#include "pos/ticket_item.h"
#include "runtime/vb.h"

#include <gtest/gtest.h>

namespace {

using vel::ticket::Entrada;

TEST(TicketItem, AScannedScrewTakesItsColumns) {
    const QString e = Entrada("7501031311309", "TORNILLO 4X40", "21", "3", "3.60");
    ASSERT_EQ(e.size(), 80);
    EXPECT_EQ(e.mid(0, 14), QStringLiteral("7501031311309 "));
    EXPECT_EQ(e.mid(14, 47), QStringLiteral("TORNILLO 4X40") + vb::Space(34));
    EXPECT_EQ(e.mid(61, 1), QStringLiteral(" "));
    EXPECT_EQ(e.mid(62, 3), QStringLiteral("21 "));
    EXPECT_EQ(e.mid(65, 5), QStringLiteral("3    "));
    EXPECT_TRUE(e.endsWith(QStringLiteral("          3.60")));
}

TEST(TicketItem, PiecesReadBackByPosition) {
    const QString e = Entrada("REF1", "MARTILLO", "10", "12", "150.00");
    EXPECT_EQ(vel::ticket::Referencia(e), QStringLiteral("REF1") + vb::Space(9));
    EXPECT_EQ(vel::ticket::Descripcion(e), QStringLiteral("MARTILLO") + vb::Space(39));
    EXPECT_EQ(vel::ticket::Porcentaje(e), QStringLiteral("10 "));
    EXPECT_EQ(vel::ticket::Unidades(e), QStringLiteral("12   "));
    EXPECT_EQ(vel::ticket::Importe(e), QStringLiteral("  150.00"));
}

// The description box takes 50 characters; the line keeps 47 of them and a
// blank before the percentage.
TEST(TicketItem, ALongDescriptionIsCutTo47) {
    const QString larga = QStringLiteral("ABCDEFGHIJ").repeated(5);
    const QString e = Entrada("R", larga, "4", "1", "1.00");
    EXPECT_EQ(vel::ticket::Descripcion(e), larga.left(47));
    EXPECT_EQ(e.mid(61, 1), QStringLiteral(" "));
    EXPECT_EQ(vel::ticket::Porcentaje(e), QStringLiteral("4  "));
}

// A rate of more than three characters loses the rest: 5.25 shows as 5.2.
TEST(TicketItem, ThePercentageTakesThreePositions) {
    const QString e = Entrada("R", "D", "5.25", "1", "1.00");
    EXPECT_EQ(vel::ticket::Porcentaje(e), QStringLiteral("5.2"));
    EXPECT_EQ(vel::ticket::Unidades(e), QStringLiteral("1    "));
}

// Negative units (a return) keep their sign; the total is right-aligned.
TEST(TicketItem, NegativeUnitsAndTotal) {
    const QString e = Entrada("R", "D", "21", "-2", "-7.20");
    EXPECT_EQ(vel::ticket::Unidades(e), QStringLiteral("-2   "));
    EXPECT_EQ(vel::ticket::Importe(e), QStringLiteral("   -7.20"));
    EXPECT_EQ(e.size(), 80);
}

// A total of more than eight characters still ends at column 80, but reads back
// without its first figures: the line has room for 99999.99.
TEST(TicketItem, ATotalBeyondEightCharactersReadsBackCut) {
    const QString e = Entrada("R", "D", "21", "1000", "123456.00");
    EXPECT_EQ(e.size(), 80);
    EXPECT_TRUE(e.endsWith(QStringLiteral("123456.00")));
    EXPECT_EQ(vel::ticket::Importe(e), QStringLiteral("23456.00"));
}

TEST(TicketItem, TheReferenceIsCutTo14AndReadBackAs13) {
    const QString e = Entrada("12345678901234567", "D", "21", "1", "1.00");
    EXPECT_EQ(e.left(14), QStringLiteral("12345678901234"));
    EXPECT_EQ(vel::ticket::Referencia(e), QStringLiteral("1234567890123"));
}

// The rate is a Single: its text has at most seven significant figures.
TEST(TicketItem, TheRateAsTheRuntimeWritesASingle) {
    EXPECT_EQ(vel::ticket::TextoPorcentaje(21.0f), QStringLiteral("21"));
    EXPECT_EQ(vel::ticket::TextoPorcentaje(10.0f), QStringLiteral("10"));
    EXPECT_EQ(vel::ticket::TextoPorcentaje(5.2f), QStringLiteral("5.2"));
    EXPECT_EQ(vel::ticket::TextoPorcentaje(0.0f), QStringLiteral("0"));
    EXPECT_EQ(vel::ticket::TextoPorcentaje(1.0f / 3.0f), QStringLiteral("0.3333333"));
}

} // namespace

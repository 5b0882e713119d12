// The printed ticket: what comes out of the receipt printer when a sale is
// charged, read on the recording printer line by line with its fonts.
#include "counter_fixture.h"
#include "printing/letterheads.h"

namespace {

using veltest::Mostrador;

// Where each line of a ticket stands with the later FERROBANDA letterhead
// (eleven lines) in front of it.
constexpr int kLineasMembrete = 11;
constexpr int kFecha = kLineasMembrete + 2;

// The printed lines after the letterhead.
QStringList TrasMembrete(const vb::PrintJobRecord& job, int membrete = kLineasMembrete) {
    return job.lines().mid(membrete);
}

TEST_F(Mostrador, ChargingPrintsOneTicketOnTheReceiptRollWithNoDialog) {
    Abrir();
    Vende("MAR500", "2");
    Tecla(Qt::Key_PageDown);
    ASSERT_EQ(impresora.jobs.size(), 1u);
    const vb::PrintJobRecord& job = impresora.last();
    EXPECT_TRUE(job.ended);
    EXPECT_FALSE(job.aborted);
    EXPECT_EQ(job.settings.paper, vb::Paper::Receipt);
    EXPECT_EQ(job.destination.name(), QStringLiteral("Grabadora"));
    EXPECT_TRUE(cajas.boxes.empty());
    // The Printer is back on the sheet for the next document of the program.
    EXPECT_EQ(vb::Printer().PaperKind(), vb::Paper::Sheet);
}

TEST_F(Mostrador, TheTicketLineByLine) {
    Abrir();
    Vende("MAR500", "2");
    Vende("LEC1", "5");
    Teclea("TextEntregado", "50");
    Intro();
    const QStringList esperadas = {
        " ",
        " ",
        "  21/11/2026    10:15:30    1 /OPERADOR",
        "  Nº: 1 /TI/000001",
        " ",
        "  Referencia          Uni  Importe  Total",
        "  MARTILLO CARPINTERO 500G" + vb::Space(16),
        "  MAR500              2    12.50  25.00",
        "  LECHE ENTERA" + vb::Space(28),
        "  LEC1                5     1.04   5.20",
        " ",
        "                    TOTAL: 30.20",
        " ",
        "         -+ I.V.A. INCLUIDO +-",
        "         GRACIAS POR SU VISITA",
    };
    EXPECT_EQ(TrasMembrete(impresora.last()), esperadas);
}

TEST_F(Mostrador, TheTicketsFontsAndSizes) {
    Abrir();
    Vende("MAR500", "1");
    Tecla(Qt::Key_PageDown);
    const auto prints = impresora.last().prints();
    ASSERT_EQ(prints.size(), size_t(kLineasMembrete + 2 + 4 + 2 + 5));
    // The letterhead starts in "Courier New" 8.
    EXPECT_EQ(prints[0].font, (vb::PrintFont{"Courier New", 8}));
    // The two blank lines keep the letterhead's last font; then "Courier New" 8.
    EXPECT_EQ(prints[kFecha - 1].font, (vb::PrintFont{"Verdana", 9}));
    for (int i = kFecha; i < kFecha + 4 + 2 + 1; ++i)
        EXPECT_EQ(prints[i].font, (vb::PrintFont{"Courier New", 8})) << i;
    const size_t total = prints.size() - 4;
    EXPECT_EQ(prints[total].text, QStringLiteral("                    TOTAL: 12.50"));
    EXPECT_EQ(prints[total].font, (vb::PrintFont{"Courier New", 10}));
    EXPECT_EQ(prints[total + 1].font, (vb::PrintFont{"Courier New", 10}));
    EXPECT_EQ(prints[total + 2].font, (vb::PrintFont{"Courier New", 8}));
    EXPECT_EQ(prints[total + 3].font, (vb::PrintFont{"Courier New", 8}));
}

TEST_F(Mostrador, EachArticleTakesTwoLinesWithItsDescriptionCutAt39) {
    Sql(veltest::Producto("LARGA", "TALADRO PERCUTOR INALAMBRICO 18V MALETIN BROCAS", "3", 1));
    Abrir();
    Vende("LARGA", "1");
    Vende("TOR440", "3");
    Tecla(Qt::Key_PageDown);
    const QStringList lineas = TrasMembrete(impresora.last());
    ASSERT_GE(lineas.size(), 10);
    EXPECT_EQ(lineas[6], QStringLiteral("  TALADRO PERCUTOR INALAMBRICO 18V MALETI "));
    EXPECT_EQ(lineas[7], QStringLiteral("  LARGA               1     3.00   3.00"));
    EXPECT_EQ(lineas[8], "  TORNILLO 4X40" + vb::Space(27));
    EXPECT_EQ(lineas[9], QStringLiteral("  TOR440              3     0.12   0.36"));
    EXPECT_EQ(lineas[10], QStringLiteral(" "));
}

TEST_F(Mostrador, TheUnitPriceEndsAtColumn32AndTheTotalAt39) {
    Sql(veltest::Producto("CARO", "GENERADOR", "123.45", 1));
    Abrir();
    Vende("CARO", "3");
    Vende("LEC1", "1");
    Tecla(Qt::Key_PageDown);
    const QStringList lineas = TrasMembrete(impresora.last());
    ASSERT_GE(lineas.size(), 10);
    EXPECT_EQ(lineas[7], QStringLiteral("  CARO                3   123.45 370.35"));
    EXPECT_EQ(lineas[9], QStringLiteral("  LEC1                1     1.04   1.04"));
    EXPECT_EQ(lineas[7].left(32).right(6), QStringLiteral("123.45"));
    EXPECT_EQ(lineas[9].left(32).right(4), QStringLiteral("1.04"));
    EXPECT_EQ(lineas[7].size(), 39);
    EXPECT_EQ(lineas[9].size(), 39);
}

// The total is cut in after the price: a total of more than six characters
// takes the columns it needs from the end of the price, as the cutting gives it.
TEST_F(Mostrador, ALongTotalCutsIntoThePrice) {
    Sql(veltest::Producto("CARO", "GENERADOR", "1234.5", 1));
    Abrir();
    Vende("CARO", "12");
    Tecla(Qt::Key_PageDown);
    const QStringList lineas = TrasMembrete(impresora.last());
    ASSERT_GE(lineas.size(), 8);
    EXPECT_EQ(lineas[7], QStringLiteral("  CARO                12 1234.514814.00"));
}

TEST_F(Mostrador, UnderAnUnknownTagTheTicketStartsAtTheDateLine) {
    Config("ferrobanda\n");
    Abrir();
    Vende("LEC1", "1");
    Tecla(Qt::Key_PageDown);
    const QStringList lineas = impresora.last().lines();
    ASSERT_GE(lineas.size(), 3);
    EXPECT_EQ(lineas[0], QStringLiteral(" "));
    EXPECT_EQ(lineas[1], QStringLiteral(" "));
    EXPECT_EQ(lineas[2], QStringLiteral("  21/11/2026    10:15:30    1 /OPERADOR"));
    EXPECT_EQ(impresora.last().prints()[0].font, (vb::PrintFont{"Courier New", 8}));
}

TEST_F(Mostrador, UnderOrtaTheTicketHasNoLetterhead) {
    Config("ORTA\n");
    Abrir();
    Vende("LEC1", "1");
    Tecla(Qt::Key_PageDown);
    const QStringList lineas = impresora.last().lines();
    ASSERT_GE(lineas.size(), 3);
    EXPECT_EQ(lineas.mid(0, 3), (QStringList{" ", " ", "  21/11/2026    10:15:30    1 /OPERADOR"}));
}

TEST_F(Mostrador, TheClosingWordsHaveAMarginOfNineBlanks) {
    Abrir();
    Vende("LEC1", "1");
    Tecla(Qt::Key_PageDown);
    const QStringList lineas = impresora.last().lines();
    ASSERT_GE(lineas.size(), 2);
    EXPECT_EQ(lineas[lineas.size() - 2], vb::Space(9) + "-+ I.V.A. INCLUIDO +-");
    EXPECT_EQ(lineas[lineas.size() - 1], vb::Space(9) + "GRACIAS POR SU VISITA");
}

// The sale is stored before the first line is printed: a machine with no
// printer at all keeps the sale, no paper comes out, and the printer's error,
// which nothing traps, ends the program with the runtime's message.
TEST_F(Mostrador, WithNoPrinterAtAllTheSaleIsStoredAndNoPaperComesOut) {
    impresora.noPrinter = true;
    Abrir();
    Vende("MAR500", "2");
    Tecla(Qt::Key_PageDown);
    EXPECT_TRUE(impresora.jobs.empty());
    EXPECT_EQ(Filas("SELECT numero_cabecera_diaria_ticket, total_cabecera_diaria_ticket FROM cabecera_diaria_ticket"),
              QStringList{"1|25"});
    EXPECT_EQ(Filas("SELECT referencia_detalle_diaria_ticket FROM detalle_diaria_ticket"),
              QStringList{"MAR500       "});
    EXPECT_EQ(Filas("SELECT contador_series FROM series"), QStringList{"1"});
    EXPECT_TRUE(terminado);
    ASSERT_EQ(cajas.boxes.size(), 1u);
    EXPECT_TRUE(cajas.boxes[0].text.contains("'484'")) << cajas.boxes[0].text.toStdString();
}

TEST_F(Mostrador, NothingIsPrintedUntilASaleIsCharged) {
    Abrir();
    Tecla(Qt::Key_PageDown);
    Pulsa("CommandCobrar");
    Vende("MAR500", "2");
    Teclea("TextEntregado", "10");
    Intro();
    for (Qt::Key k : {Qt::Key_F5, Qt::Key_F6, Qt::Key_F7, Qt::Key_F8, Qt::Key_F9, Qt::Key_F12}) Tecla(k);
    EXPECT_TRUE(impresora.jobs.empty());
}

// Forty characters of "Courier New" 8 fit across the receipt roll.
TEST_F(Mostrador, FortyCharactersFitTheReceiptRoll) {
    vb::PrinterObject& p = vb::Printer();
    p.SetPaperKind(vb::Paper::Receipt);
    p.SetFontName("Courier New");
    p.SetFontSize(8);
    const double ancho = p.ScaleWidth(); // twips
    EXPECT_LE(p.TextWidth(QString(40, QLatin1Char('M'))), ancho);
    EXPECT_GT(p.TextWidth(QString(48, QLatin1Char('M'))), ancho);
    EXPECT_NEAR(p.Width(), 80 * 1440 / 25.4, 1);
    p.SetPaperKind(vb::Paper::Sheet);
}

} // namespace

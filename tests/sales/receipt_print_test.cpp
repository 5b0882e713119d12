// The delivery note's receipt: nineteen lines of "Courier New" 12 whose boxes
// are em dashes and bars.
#include "print_fixture.h"
#include "runtime/vb.h"
#include "sales/receipts.h"

namespace vel::testing {
namespace {

using vb::Space;

class ReceiptPrint : public PrintTest {
protected:
    std::shared_ptr<Rejilla> rejilla = std::make_shared<Rejilla>();
    QStringList print(const print_layout::Documento& d) {
        receipts::ReciboAlbaran(printer, d);
        printer.EndDoc();
        return lines();
    }
    static QString bar(int at, const QString& line) { return line.mid(at - 1, 1); }
};

TEST_F(ReceiptPrint, TheDashIsCharacter151OfWindows1252) {
    EXPECT_EQ(receipts::Raya(), QString(QChar(0x2014)));
    EXPECT_EQ(receipts::ReglaRecibo(), Space(13) + QString(59, QChar(0x2014)));
}

TEST_F(ReceiptPrint, TheNineteenLinesOfAReceipt) {
    const QString rule = receipts::ReglaRecibo();
    EXPECT_EQ(print(NotaDeEntrega(rejilla, 3)),
              QStringList({
                  rule,
                  "            | RECIBO Nº: | LOCALIDAD DE EXPEDICIÓN:   | IMPORTE:        |",
                  "            |    00027   |  PORTELAS                  |    10.89      |",
                  rule,
                  "            | FECHA DE EXPEDICIÓN:       | VENCIMIENTO:                 |",
                  "            |            21/11/2026      |        21/12/2026            |",
                  rule,
                  "",
                  "",
                  rule,
                  "            | DOMICILIACIÓN BANCARIA:                                   |",
                  "            |  BANCO MAREIRO / ES91 2100 0000 11 0200000000                        |",
                  rule,
                  rule,
                  "            |   FERRETERIA O CRUCEIRO                                   |",
                  "            |   XOSE MANUEL CASAL RIOS                                  |",
                  "            |   RUA DO CRUCEIRO 4                                       |",
                  "            |   15001 PORTELAS-VALDEFERRO                               |",
                  rule,
              }));
    for (const auto& e : recorder.last().prints()) EXPECT_EQ(e.font, (vb::PrintFont{"Courier New", 12, false, false}));
}

// One receipt for the due date chosen, with the amount of the whole note.
TEST_F(ReceiptPrint, AReceiptCarriesTheChosenDueDateAndTheWholeAmount) {
    auto d = NotaDeEntrega(rejilla, 3);
    d.Comborecibosfactura = "20/01/2027"; // the second of three dates
    d.Labeltotalfactura = "1452.6";
    const QStringList l = print(d);
    EXPECT_EQ(l[5], "            |            21/11/2026      |        20/01/2027            |");
    EXPECT_EQ(l[2], "            |    00027   |  PORTELAS                  |    1452.60      |");
}

// The closing bar of the amount's line follows the figure.
TEST_F(ReceiptPrint, TheAmountsBarMovesWithTheFigure) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Labeltotalfactura = "5";
    EXPECT_EQ(print(d)[2].size(), 54 + 1 + 4 + 4 + 6 + 1);
    d.Labeltotalfactura = "123456.789";
    EXPECT_EQ(print(d)[2], "            |    00027   |  PORTELAS                  |    123456.79      |");
}

TEST_F(ReceiptPrint, WithNoBankAccountTheBankLinePrintsTheSeparatorsOnly) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Labelbanco = d.TextIban = d.Textbanco = d.Textsucursal = d.Textdigitocontrol = d.Textnumerocuenta = "";
    EXPECT_EQ(print(d)[11], Space(12) + "|" + "  " + " / " + "    " + Space(24) + "|");
}

TEST_F(ReceiptPrint, ALongAccountPushesTheBarToTheRight) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Labelbanco = "BANCO MAREIRO CORPORACION BANCARIA";
    const QString l = print(d)[11];
    EXPECT_TRUE(l.endsWith(Space(24) + "|"));
    EXPECT_GT(l.size(), 100);
}

TEST_F(ReceiptPrint, ALongCustomerNameIsCutAtTheRightBar) {
    auto d = NotaDeEntrega(rejilla, 1);
    d.Combonombrecomercial = "FERRETERIA E SUMINISTROS INDUSTRIAIS DO CRUCEIRO DE PORTELAS E ARREDORES";
    d.Textprovincia = "VALDEFERRO DE ARRIBA E DE ABAIXO, PROVINCIA MOI LONGA";
    const QStringList l = print(d);
    EXPECT_EQ(l[14], "            |   FERRETERIA E SUMINISTROS INDUSTRIAIS DO CRUCEIRO DE PORT|");
    EXPECT_EQ(l[17].size(), 73);
    EXPECT_EQ(bar(73, l[17]), "|");
}

TEST_F(ReceiptPrint, ThePlaceOfIssueIsPortelasUnderEveryTag) {
    for (const char* tag : {"FERROBANDA", "ULTRAMARINOS", "LAPRESA", "ORTA", "ferrobanda", ""}) {
        const QStringList l = print(NotaDeEntrega(rejilla, 1, tag));
        EXPECT_EQ(l.size(), 19);
        EXPECT_EQ(l[2].mid(25, 11), "|  PORTELAS") << tag;
    }
}

} // namespace
} // namespace vel::testing

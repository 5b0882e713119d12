// The installation's letterhead at the top of an invoice (and of each of its
// pages), the bank line ORTA prints with "Impr. NCB Empresa" ticked, and the
// notice at the foot.
#include "invoice_fixture.h"
#include "printing/letterheads.h"

namespace vel::testing {
namespace {

using vb::Space;

const QString OrtaBankLine = Space(18) + "Nº Cuenta: MAREESMMXXX ES91 2100 0000 11 0200000000 - Banco Mareiro "
                                         "Corporación Bancaria S.A.";

class InvoiceLetterhead : public InvoicePrintTest {
protected:
    // What follows the foot's values line: the rule's feed, the bank line where
    // there is one, the notice and the last empty Print.
    QStringList afterTotals(const QString& tag, int CheckCuenta) {
        auto d = Factura(rejilla, 3, tag);
        d.CheckCuenta = CheckCuenta;
        print(d);
        const QStringList l = lines();
        const int title = int(l.indexOf(InvoiceFootTitle));
        EXPECT_GT(title, 0);
        return l.mid(title + 2);
    }
    static QStringList indented(const QStringList& notice) {
        QStringList out;
        for (const QString& line : notice) out << Space(3) + line;
        return out;
    }
};

TEST_F(InvoiceLetterhead, OrtaWithTheBoxTickedPrintsTheBankLineBeforeTheNotice) {
    const QStringList expected = QStringList({"", OrtaBankLine, ""}) +
                                 indented(letterheads::AvisoLegal(letterheads::Bloque::Orta)) + QStringList({""});
    EXPECT_EQ(afterTotals("ORTA", 1), expected);
    const auto& bank = printed(OrtaBankLine);
    EXPECT_EQ(bank.font, (vb::PrintFont{"Courier New", 8, false, false}));
    EXPECT_EQ(bank.x, 0);
    // The bank line starts where the foot's last rule is drawn.
    double lastRuleY = -1;
    for (const auto& e : recorder.last().events)
        if (e.kind == vb::PrintEvent::Kind::Line) lastRuleY = e.y;
    EXPECT_EQ(bank.y, lastRuleY);
}

TEST_F(InvoiceLetterhead, OrtaWithTheBoxClearPrintsNoBankLine) {
    const QStringList expected =
        QStringList({""}) + indented(letterheads::AvisoLegal(letterheads::Bloque::Orta)) + QStringList({""});
    EXPECT_EQ(afterTotals("ORTA", 0), expected);
    EXPECT_FALSE(lines().contains(OrtaBankLine));
}

TEST_F(InvoiceLetterhead, UltramarinosWithTheBoxTickedPrintsNoBankLine) {
    const QStringList expected =
        QStringList({""}) + indented(letterheads::AvisoLegal(letterheads::Bloque::Ultramarinos)) + QStringList({""});
    EXPECT_EQ(afterTotals("ULTRAMARINOS", 1), expected);
    EXPECT_FALSE(lines().join('\n').contains("Nº Cuenta"));
}

TEST_F(InvoiceLetterhead, LapresaPrintsALetterheadAndNoNotice) {
    EXPECT_EQ(afterTotals("LAPRESA", 1), QStringList({"", ""}));
    EXPECT_TRUE(lines().contains("           LA PRESA"));
}

TEST_F(InvoiceLetterhead, OrtasLetterheadOpensTheInvoiceAndTheCustomerBlockFollowsInCourier12) {
    print(Factura(rejilla, 1, "ORTA"));
    const auto prints = recorder.last().prints();
    const auto& m = letterheads::MembreteDocumento(letterheads::Bloque::Orta);
    ASSERT_GT(prints.size(), m.size());
    for (size_t i = 0; i < m.size(); ++i) {
        EXPECT_EQ(prints[i].text, m[i].texto) << i;
        EXPECT_EQ(prints[i].font, (vb::PrintFont{m[i].fuente, m[i].tamano, false, false})) << i;
    }
    EXPECT_EQ(prints[m.size()].text, Space(40) + "FERRETERIA O CRUCEIRO");
    EXPECT_EQ(prints[m.size()].font, (vb::PrintFont{"Courier New", 12, false, false}));
}

// The block is chosen by the day of printing, never by the invoice's date.
TEST_F(InvoiceLetterhead, FerrobandaChangesItsBlockOnThe31stOfMarch2019WhateverTheInvoicesDate) {
    auto d = Factura(rejilla, 1);
    d.Textfechafactura = "15/01/2030";
    today(30, 3, 2019);
    print(d);
    EXPECT_EQ(lines()[3], " SUMINISTROS INDUSTRIALES");
    EXPECT_TRUE(lines().contains(Space(3) + letterheads::AvisoLegal(letterheads::Bloque::FerrobandaAnterior)[1]));
    recorder.clear();
    today(31, 3, 2019);
    d.Textfechafactura = "01/01/2019";
    print(d);
    EXPECT_EQ(lines()[3], "SUMINISTROS INDUSTRIALES");
    EXPECT_EQ(recorder.last().prints()[3].color, vb::vbRed);
    EXPECT_TRUE(lines().contains(Space(3) + letterheads::AvisoLegal(letterheads::Bloque::FerrobandaPosterior)[1]));
}

// An unknown tag (the comparison is exact) prints no letterhead and no notice:
// the invoice starts with the customer in the "Courier New" 8 set before the
// tag was looked at.
TEST_F(InvoiceLetterhead, ALowerCaseTagPrintsNoLetterheadAndNoNotice) {
    print(Factura(rejilla, 1, "ferrobanda"));
    const auto prints = recorder.last().prints();
    EXPECT_EQ(prints[0].text, Space(40) + "FERRETERIA O CRUCEIRO");
    EXPECT_EQ(prints[0].font, (vb::PrintFont{"Courier New", 8, false, false}));
    EXPECT_EQ(lines().last(), "");
    EXPECT_FALSE(lines().join('\n').contains("Protección de Datos"));
}

} // namespace
} // namespace vel::testing

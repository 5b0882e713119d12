// The invoice's receipt: an A4 sheet measured in millimetres, four boxes drawn
// with lines and every field printed at its place.
#include "invoice_fixture.h"
#include "sales/receipts.h"

namespace vel::testing {
namespace {

struct Stroke {
    double x1, y1, x2, y2;
};
struct Placed {
    double x, y;
    QString text;
};

class InvoiceReceiptPrint : public InvoicePrintTest {
protected:
    void printReceipt(const print_layout::Documento& d) {
        printer.SetScaleMode(4); // as the job leaves it
        receipts::ReciboFactura(printer, d);
        printer.EndDoc();
    }
    // Twips of one unit of the 210 by 297 scale on the recorder's printable area.
    double mmX() const { return recorder.portrait.printable.width() / 210; }
    double mmY() const { return recorder.portrait.printable.height() / 297; }

    std::vector<Stroke> strokes() const {
        std::vector<Stroke> out;
        for (const auto& e : recorder.last().events)
            if (e.kind == vb::PrintEvent::Kind::Line) out.push_back({e.x / mmX(), e.y / mmY(), e.x2 / mmX(), e.y2 / mmY()});
        return out;
    }
    std::vector<Placed> placed() const {
        std::vector<Placed> out;
        for (const auto& e : recorder.last().prints()) out.push_back({e.x / mmX(), e.y / mmY(), e.text});
        return out;
    }
    // The text printed at (x, y) millimetres.
    QString at(double x, double y) const {
        for (const Placed& p : placed())
            if (std::abs(p.x - x) < 1e-6 && std::abs(p.y - y) < 1e-6) return p.text;
        return "(nothing)";
    }
};

TEST_F(InvoiceReceiptPrint, TheBoxesAreDrawnFirstInTheirOrder) {
    printReceipt(Factura(rejilla, 3, "ORTA"));
    const std::vector<Stroke> expected = {
        {32, 7, 184, 7},   {184, 7, 184, 21},  {184, 21, 32, 21},  {32, 21, 32, 7},   {66, 7, 66, 21},
        {140, 7, 140, 21}, {32, 21, 32, 35},   {32, 35, 184, 35},  {184, 35, 184, 21}, {107, 21, 107, 35},
        {32, 49, 184, 49}, {184, 49, 184, 63}, {184, 63, 32, 63},  {32, 63, 32, 49},  {32, 68, 184, 68},
        {184, 68, 184, 91}, {184, 91, 32, 91}, {32, 91, 32, 68},
    };
    const auto s = strokes();
    ASSERT_EQ(s.size(), expected.size());
    for (size_t i = 0; i < s.size(); ++i) {
        EXPECT_NEAR(s[i].x1, expected[i].x1, 1e-6) << i;
        EXPECT_NEAR(s[i].y1, expected[i].y1, 1e-6) << i;
        EXPECT_NEAR(s[i].x2, expected[i].x2, 1e-6) << i;
        EXPECT_NEAR(s[i].y2, expected[i].y2, 1e-6) << i;
    }
    // All of them before the first text, in the colour in force.
    const auto& events = recorder.last().events;
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(events[i].kind, vb::PrintEvent::Kind::Line) << i;
        EXPECT_EQ(events[i].color, vb::vbBlack) << i;
    }
}

TEST_F(InvoiceReceiptPrint, TheFieldsArePrintedAtTheirPlacesInMillimetres) {
    printReceipt(Factura(rejilla, 3));
    const std::vector<Placed> expected = {
        {36, 10, "RECIBO Nº:   LOCALIDAD DE EXPEDICIÓN:     IMPORTE:"},
        {44, 14, "00027"},
        {72, 14, "PORTELAS"},
        {147, 14, "10.89"},
        {36, 24, "FECHA DE EXPEDICIÓN:         VENCIMIENTO:"},
        {67, 28, "21/11/2026"},
        {131, 28, "21/12/2026"},
        {36, 52, "DOMICILIACIÓN BANCARIA:"},
        {38, 56, "BANCO MAREIRO / ES91 2100 0000 11 0200000000"},
        {41, 71, "FERRETERIA O CRUCEIRO"},
        {41, 75, "XOSE MANUEL CASAL RIOS"},
        {41, 79, "RUA DO CRUCEIRO 4"},
        {41, 83, "15001 PORTELAS-VALDEFERRO"},
    };
    const auto p = placed();
    ASSERT_EQ(p.size(), expected.size());
    for (size_t i = 0; i < p.size(); ++i) {
        EXPECT_NEAR(p[i].x, expected[i].x, 1e-6) << i;
        EXPECT_NEAR(p[i].y, expected[i].y, 1e-6) << i;
        EXPECT_EQ(p[i].text, expected[i].text) << i;
    }
    for (const auto& e : recorder.last().prints()) EXPECT_EQ(e.font, (vb::PrintFont{"Courier New", 12, false, false}));
    EXPECT_EQ(recorder.last().pages(), 1);
}

// ScaleMode 6, then a scale of 210 by 297 over the printable area: the job's
// character cells no longer apply.
TEST_F(InvoiceReceiptPrint, TheReceiptMeasuresTheSheetIn210By297) {
    printReceipt(Factura(rejilla, 1));
    EXPECT_EQ(printer.ScaleWidth(), 210);
    EXPECT_EQ(printer.ScaleHeight(), 297);
    EXPECT_EQ(printer.ScaleMode(), 0); // setting the scale makes it the user's own
    // (32,7) is 32 and 7 parts of the printable width and height, not cells.
    EXPECT_NEAR(recorder.last().events[0].x, 32 * mmX(), 1e-6);
    EXPECT_NEAR(recorder.last().events[0].y, 7 * mmY(), 1e-6);
}

// One receipt for the due date chosen, with the total of the whole invoice.
TEST_F(InvoiceReceiptPrint, AReceiptCarriesTheChosenDueDateAndTheWholeAmount) {
    auto d = Factura(rejilla, 3);
    d.Comborecibosfactura = "20/01/2027"; // the second of 21/12/2026, 20/01/2027, 19/02/2027
    d.Labeltotalfactura = "1452.6";
    printReceipt(d);
    EXPECT_EQ(at(131, 28), "20/01/2027");
    EXPECT_EQ(at(147, 14), "1452.60");
    EXPECT_EQ(recorder.jobs.size(), 1u);
    EXPECT_EQ(recorder.last().pages(), 1);
}

TEST_F(InvoiceReceiptPrint, WithNoBankAccountTheBankLinePrintsTheSeparatorsOnly) {
    auto d = Factura(rejilla, 1);
    d.Labelbanco = d.TextIban = d.Textbanco = d.Textsucursal = d.Textdigitocontrol = d.Textnumerocuenta = "";
    printReceipt(d);
    EXPECT_EQ(at(38, 56), " / " + vb::Space(4));
}

TEST_F(InvoiceReceiptPrint, ThePlaceOfIssueIsPortelasUnderEveryTagOrtaIncluded) {
    for (const char* tag : {"FERROBANDA", "ULTRAMARINOS", "LAPRESA", "ORTA", "ferrobanda", ""}) {
        recorder.clear();
        printReceipt(Factura(rejilla, 1, tag));
        EXPECT_EQ(at(72, 14), "PORTELAS") << tag;
        EXPECT_EQ(placed().size(), 13u) << tag; // no letterhead, no notice
    }
}

} // namespace
} // namespace vel::testing

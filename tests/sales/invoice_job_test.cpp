// The invoice's print buttons as the window runs them: the job named after the
// invoice while it prints, the print dialog, and App.Title put back after.
#include "invoice_fixture.h"
#include "runtime/msgbox.h"
#include "printing/print_job.h"
#include "sales/receipts.h"

namespace vel::testing {
namespace {

using print_layout::NombreTrabajoFactura;

class InvoiceJob : public InvoicePrintTest {
protected:
    vb::CommonDialog CommonDialog1;
    void SetUp() override { vb::SetAppTitle("Velmarinda"); }
    void TearDown() override { vb::SetAppTitle("Velmarinda"); }

    // Commandfactura_Click.
    bool invoiceButton(const print_layout::Documento& d) {
        return vb::RunPrintJob({.dialog = &CommonDialog1,
                                .title = NombreTrabajoFactura(d),
                                .procedures = {[&] { print_layout::cabecerafactura(vb::Printer(), d); },
                                               [&] { print_layout::detallefactura(vb::Printer(), d, contadores); },
                                               [&] { print_layout::piefactura(vb::Printer(), d); }}});
    }
    // Commandrecibos_Click.
    bool receiptButton(const print_layout::Documento& d) {
        return vb::RunPrintJob(
            {.dialog = &CommonDialog1, .procedures = {[&] { receipts::ReciboFactura(vb::Printer(), d); }}});
    }
};

TEST_F(InvoiceJob, TheJobIsNamedByNumberDateAndCustomerCode) {
    print_layout::Documento d;
    d.Combonumerofactura = "00027";
    d.Textfechafactura = "21/11/2026";
    d.Combocodigo = "430001";
    EXPECT_EQ(NombreTrabajoFactura(d), "00027 20261121 - 430001");
    d.Textfechafactura = "1/2/2027";
    EXPECT_EQ(NombreTrabajoFactura(d), "00027 20270201 - 430001");
    // An empty date formats as nothing.
    d.Textfechafactura = "";
    EXPECT_EQ(NombreTrabajoFactura(d), "00027  - 430001");
}

TEST_F(InvoiceJob, TheInvoiceButtonPrintsOneDocumentNamedAfterTheInvoice) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = "Oficina"});
    auto d = Factura(rejilla, 3, "ORTA");
    d.CheckCuenta = 1;
    EXPECT_TRUE(invoiceButton(d));
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_EQ(recorder.last().settings.name, "00027 20261121 - 430001");
    EXPECT_EQ(recorder.last().destination.printer, "Oficina");
    EXPECT_TRUE(recorder.last().ended);
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
    EXPECT_TRUE(lines().contains(row(3)));
    EXPECT_TRUE(lines().join('\n').contains("Nº Cuenta: MAREESMMXXX"));
    // The job's ScaleMode 4: the rules run from cell 1, 120 twips in.
    for (const auto& e : recorder.last().events) {
        if (e.kind == vb::PrintEvent::Kind::Line) {
            EXPECT_EQ(e.x, 120);
        }
    }
}

// The receipt's job keeps the program's title, and its millimetres override
// the job's character cells.
TEST_F(InvoiceJob, TheReceiptButtonPrintsOnePageInMillimetres) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = "Oficina"});
    EXPECT_TRUE(receiptButton(Factura(rejilla, 3)));
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_EQ(recorder.last().settings.name, "Velmarinda");
    EXPECT_EQ(recorder.last().pages(), 1);
    const auto& first = recorder.last().events.front();
    ASSERT_EQ(first.kind, vb::PrintEvent::Kind::Line);
    EXPECT_NEAR(first.x, 32 * recorder.portrait.printable.width() / 210, 1e-6);
}

} // namespace
} // namespace vel::testing

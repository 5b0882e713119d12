// What the delivery note's and the invoice's print buttons do alike, written
// once and run for both: a printer chosen in the dialog gets one whole
// document of header, lines and foot; a cancelled dialog or a machine with no
// printer prints nothing and runs none of the procedures; and the program's
// title is back afterwards either way. Each document brings its three print
// procedures and the name its job takes while it prints.
#include "invoice_fixture.h"
#include "printing/print_job.h"
#include "runtime/msgbox.h"
#include <functional>
#include <optional>

namespace vel::testing {
namespace {

struct Documento {
    const char* nombre;
    // A document of n screw lines as the window shows it.
    std::function<print_layout::Documento(const std::shared_ptr<Rejilla>&, int)> enPantalla;
    std::function<void(vb::PrinterObject&, const print_layout::Documento&)> cabecera;
    std::function<void(vb::PrinterObject&, const print_layout::Documento&, print_layout::Contadores&)> detalle;
    std::function<void(vb::PrinterObject&, const print_layout::Documento&)> pie;
    // The job's name while it prints; none keeps the program's title.
    std::function<std::optional<QString>(const print_layout::Documento&)> titulo;
    std::function<QString(int)> fila;
};

std::ostream& operator<<(std::ostream& os, const Documento& d) { return os << d.nombre; }

// The i-th line of 2 screws at 1.50 that the documents on screen carry.
std::array<QString, 7> Celdas(int i) {
    return {QStringLiteral("TORN%1").arg(i, 3, 10, QLatin1Char('0')), "TORNILLO 4X40", "2", "1.50", "3.00", "0",
            "3.00"};
}

const Documento kAlbaran{
    .nombre = "albaran",
    .enPantalla = [](const std::shared_ptr<Rejilla>& r, int n) { return NotaDeEntrega(r, n); },
    .cabecera = print_layout::cabeceraalbaran,
    .detalle = print_layout::detallealbaran,
    .pie = print_layout::piealbaran,
    .titulo = [](const print_layout::Documento&) { return std::optional<QString>(); },
    .fila = [](int i) { return print_layout::LineaAlbaran(Celdas(i)); },
};

const Documento kFactura{
    .nombre = "factura",
    .enPantalla = [](const std::shared_ptr<Rejilla>& r, int n) { return Factura(r, n); },
    .cabecera = print_layout::cabecerafactura,
    .detalle = print_layout::detallefactura,
    .pie = print_layout::piefactura,
    .titulo = [](const print_layout::Documento& d) { return std::optional<QString>(print_layout::NombreTrabajoFactura(d)); },
    .fila = [](int i) { return print_layout::LineaFactura(Celdas(i)); },
};

class DocumentPrintJob : public PrintTest, public ::testing::WithParamInterface<Documento> {
protected:
    vb::CommonDialog CommonDialog1;
    std::shared_ptr<Rejilla> rejilla = std::make_shared<Rejilla>();
    print_layout::Contadores contadores;
    int procedimientosCorridos = 0;

    void SetUp() override { vb::SetAppTitle("Velmarinda"); }
    void TearDown() override { vb::SetAppTitle("Velmarinda"); }

    // The print button: the dialog, then header, lines and foot as one job.
    bool imprimir(const print_layout::Documento& d) {
        const Documento& doc = GetParam();
        return vb::RunPrintJob({.dialog = &CommonDialog1,
                                .title = doc.titulo(d),
                                .procedures = {[&] { ++procedimientosCorridos; doc.cabecera(vb::Printer(), d); },
                                               [&] { ++procedimientosCorridos; doc.detalle(vb::Printer(), d, contadores); },
                                               [&] { ++procedimientosCorridos; doc.pie(vb::Printer(), d); }}});
    }
};

TEST_P(DocumentPrintJob, APrinterChosenGetsTheWholeDocumentAsOneJob) {
    dialogs.answers.push_back(vb::PrinterChoice{.printerName = "Oficina"});
    EXPECT_TRUE(imprimir(GetParam().enPantalla(rejilla, 2)));
    ASSERT_EQ(recorder.jobs.size(), 1u);
    EXPECT_TRUE(recorder.last().ended);
    EXPECT_EQ(recorder.last().destination.printer, "Oficina");
    EXPECT_EQ(procedimientosCorridos, 3);
    EXPECT_TRUE(lines().contains(GetParam().fila(1)));
    EXPECT_TRUE(lines().contains(GetParam().fila(2)));
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

TEST_P(DocumentPrintJob, WithTheDialogCancelledNothingIsPrintedAndTheTitleIsBack) {
    dialogs.answers.push_back(std::nullopt);
    EXPECT_FALSE(imprimir(GetParam().enPantalla(rejilla, 2)));
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_EQ(procedimientosCorridos, 0);
    EXPECT_EQ(contadores.paginas, 0);
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

TEST_P(DocumentPrintJob, WithNoPrinterNothingIsPrintedAndTheTitleIsBack) {
    recorder.noPrinter = true;
    dialogs.answers.push_back(vb::PrinterChoice{});
    EXPECT_FALSE(imprimir(GetParam().enPantalla(rejilla, 2)));
    EXPECT_TRUE(recorder.jobs.empty());
    EXPECT_EQ(procedimientosCorridos, 0);
    EXPECT_EQ(vb::AppTitle(), "Velmarinda");
}

INSTANTIATE_TEST_SUITE_P(DeliveryNoteAndInvoice, DocumentPrintJob, ::testing::Values(kAlbaran, kFactura),
                         [](const auto& info) { return std::string(info.param.nombre); });

} // namespace
} // namespace vel::testing

// A delivery note of 39,000 lines (1,001 pages of 39 lines) printed whole: to
// the recording printer, and to a PDF file through the real environment. An
// invoice of 1,000 lines with a long description of 200 lines, the same two ways.
#include "runtime/print_transcript.h"
#include "runtime/printer.h"
#include "sales/print_layout.h"
#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int kLineas = 39000;

void ensureApplication() {
    static int argc = 1;
    static char name[] = "velbench";
    static char* argv[] = {name, nullptr};
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication* app = QApplication::instance() ? nullptr : new QApplication(argc, argv);
    (void)app;
}

vel::print_layout::Documento granNota() {
    vel::print_layout::Documento d;
    d.ClientePrograma = "FERROBANDA";
    d.Combonombrecomercial = "FERRETERIA O CRUCEIRO";
    d.Combonombrefiscal = "XOSE MANUEL CASAL RIOS";
    d.Textdomicilio = "RUA DO CRUCEIRO 4";
    d.Textcodigopostal = "15001";
    d.Textpoblacion = "PORTELAS";
    d.Textprovincia = "VALDEFERRO";
    d.Combonif = "00000014Z";
    d.Combonumerofactura = "00027";
    d.Comboejerciciofactura = "2026";
    d.Textfechafactura = "21/11/2026";
    d.Labelformapagofacturavencimientos = "1/30";
    d.ComboProforma = "Albarán";
    d.Labelbruto = d.Labelneto = d.Labelbase = "117000.00";
    d.Textiva = "21";
    d.Labelimporteiva = "24570.00";
    d.Textrecargo = "0";
    d.Labeltotalfactura = "141570.00";
    d.Rows = kLineas + 1;
    d.TextMatrix = [](int row, int col) -> QString {
        switch (col) {
        case 0: return QStringLiteral("TORN%1").arg(row, 6, 10, QLatin1Char('0'));
        case 1: return QStringLiteral("TORNILLO 4X40 CINCADO");
        case 2: return QStringLiteral("2");
        case 3: return QStringLiteral("1.50");
        case 4: return QStringLiteral("3.00");
        case 5: return QStringLiteral("0");
        default: return QStringLiteral("3.00");
        }
    };
    return d;
}

void imprime(const vel::print_layout::Documento& d) {
    vb::PrinterObject& p = vb::Printer();
    vel::print_layout::Contadores c;
    p.SetScaleMode(4);
    vel::print_layout::cabeceraalbaran(p, d);
    vel::print_layout::detallealbaran(p, d, c);
    vel::print_layout::piealbaran(p, d);
    p.EndDoc();
}

void BM_NotaDe39000LineasAGrabadora(benchmark::State& state) {
    ensureApplication();
    const auto d = granNota();
    vb::PrintRecorder recorder;
    vb::SetPrintEnvironment(&recorder);
    for (auto _ : state) {
        recorder.clear();
        imprime(d);
    }
    state.counters["paginas"] = recorder.last().pages();
    state.counters["lineas_impresas"] = double(recorder.last().prints().size());
    vb::SetPrintEnvironment(nullptr);
}
BENCHMARK(BM_NotaDe39000LineasAGrabadora)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_NotaDe39000LineasAPdf(benchmark::State& state) {
    ensureApplication();
    const auto d = granNota();
    QTemporaryDir dir;
    const QString file = dir.filePath("nota.pdf");
    vb::SetPrintEnvironment(nullptr);
    for (auto _ : state) {
        vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, file});
        imprime(d);
    }
    state.counters["MB"] = double(QFileInfo(file).size()) / 1e6;
}
BENCHMARK(BM_NotaDe39000LineasAPdf)->Unit(benchmark::kMillisecond)->Iterations(1);

// An ORTA invoice of 1,000 lines with a long description of 200 lines and the
// bank line: 31 pages, each with the whole letterhead.
vel::print_layout::Documento granFactura() {
    vel::print_layout::Documento d = granNota();
    d.ClientePrograma = "ORTA";
    d.ComboProforma.clear();
    d.Combocodigo = "430001";
    d.CheckCuenta = 1;
    d.Rows = 1000 + 1;
    d.Labelbruto = d.Labelneto = d.Labelbase = "3000.00";
    d.Labelimporteiva = "630.00";
    d.Labeltotalfactura = "3630.00";
    QStringList texto;
    for (int i = 1; i <= 200; ++i)
        texto << QStringLiteral("Instalación e configuración do equipo, partida %1").arg(i);
    d.TextDescripcionLarga = texto.join(QStringLiteral("\r\n"));
    return d;
}

void imprimeFactura(const vel::print_layout::Documento& d) {
    vb::PrinterObject& p = vb::Printer();
    vel::print_layout::Contadores c;
    p.SetScaleMode(4);
    vel::print_layout::cabecerafactura(p, d);
    vel::print_layout::detallefactura(p, d, c);
    vel::print_layout::piefactura(p, d);
    p.EndDoc();
}

void BM_FacturaDe1000LineasAGrabadora(benchmark::State& state) {
    ensureApplication();
    const auto d = granFactura();
    vb::PrintRecorder recorder;
    vb::SetPrintEnvironment(&recorder);
    for (auto _ : state) {
        recorder.clear();
        imprimeFactura(d);
    }
    state.counters["paginas"] = recorder.last().pages();
    state.counters["lineas_impresas"] = double(recorder.last().prints().size());
    vb::SetPrintEnvironment(nullptr);
}
BENCHMARK(BM_FacturaDe1000LineasAGrabadora)->Unit(benchmark::kMillisecond)->Iterations(10);

void BM_FacturaDe1000LineasAPdf(benchmark::State& state) {
    ensureApplication();
    const auto d = granFactura();
    QTemporaryDir dir;
    const QString file = dir.filePath("factura.pdf");
    vb::SetPrintEnvironment(nullptr);
    for (auto _ : state) {
        vb::Printer().SetDestination({vb::PrintDestination::Kind::File, {}, file});
        imprimeFactura(d);
    }
    state.counters["MB"] = double(QFileInfo(file).size()) / 1e6;
}
BENCHMARK(BM_FacturaDe1000LineasAPdf)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

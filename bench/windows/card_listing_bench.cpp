// The customers' card listing (Faclistado) on a busy year: 2,000 customers
// with 100 entries each, 200,000 entries in 2026.
//  - the listing of all customers: BotonListadofcl from the click to the
//    lines in the list, with subtotals and the total (some 204,000 lines);
//    time and the peak resident memory it adds;
//  - printing 37,000 of those lines (1,000 pages) through BotonImprimirfcl,
//    to the recording printer and to a PDF file.
//
// The database is made once into /tmp/velmarinda_listing_bench.mdb
// (VELMARINDA_LISTING_BENCH_DB overrides it) and kept.
//
// Run: build/bin/velbench_windows --benchmark_filter=Listado
#include "cards/card_listing.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/environment.h"
#include "runtime/line_list.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kCustomers = 2000;
constexpr int kEntriesEach = 100;

QString benchPath() {
    const char* env = std::getenv("VELMARINDA_LISTING_BENCH_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_listing_bench.mdb");
}

void generate(const QString& path) {
    std::fprintf(stderr, "Making %s with %d entries...\n", qPrintable(path), kCustomers * kEntriesEach);
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    sqlite3_exec(db->handle(), "BEGIN", nullptr, nullptr, nullptr);
    for (int i = 0; i < kCustomers; ++i) {
        const QString nif = QStringLiteral("%1%2").arg(10000000 + i * 7).arg(QChar('A' + i % 23));
        const QString codigo = QStringLiteral("C%1").arg(i, 6, 10, QChar('0'));
        db->Execute(QStringLiteral(
                        "INSERT INTO clientes VALUES ('%1', '%2', 'PEDRO', 'GARCÍA', 'FERRETERÍA %3', 'RÚA NOVA 1', "
                        "'PORTELAS', 'VALDEFERRO', 'ESPAÑOLA', 15001, 911111111, 0, 0, 0, '', '', 0, '', 0, '', '', "
                        "0, '', '', 0, '', '0049', '0012', 12, 1234567890, 28, 0, '30', 1, 5, 0, 1, 1, '1000', 0, 1, "
                        "'COM1', 'FERRETERÍA %3 SL', '01/02/2024', '', 'ES12')")
                        .arg(codigo, nif)
                        .arg(i));
        for (int n = 1; n <= kEntriesEach; ++n) {
            const int dia = 1 + n % 28, mes = 1 + n % 12;
            const bool cobro = n % 2 == 0;
            db->Execute(QStringLiteral("INSERT INTO detalle_fichas_clientes VALUES (2026, '%1', '%2', %3, '1', 'FC', "
                                       "'', '30', '%4', '%5/%6/2026', %7, %8, '%9')")
                            .arg(nif, codigo)
                            .arg(n)
                            .arg(cobro ? QStringLiteral("COBRO FACTURA %1").arg(n - 1)
                                       : QStringLiteral("FACTURA %1 DE MATERIAL DE FERRETERÍA").arg(n))
                            .arg(dia, 2, 10, QChar('0'))
                            .arg(mes, 2, 10, QChar('0'))
                            .arg(cobro ? QStringLiteral("0") : QString::number(12.5 + n % 300))
                            .arg(cobro ? QString::number(12.5 + (n - 1) % 300) : QStringLiteral("0"))
                            .arg(cobro ? QStringLiteral("C") : QString()));
        }
    }
    sqlite3_exec(db->handle(), "COMMIT", nullptr, nullptr, nullptr);
}

long statusKb(const char* field) {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly)) return 0;
    const QByteArray key = QByteArray(field) + ':';
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith(key)) return line.mid(key.size()).trimmed().split(' ').value(0).toLong();
    return 0;
}

class PeakMemory {
public:
    PeakMemory() {
        malloc_trim(0);
        QFile clear(QStringLiteral("/proc/self/clear_refs"));
        if (clear.open(QIODevice::WriteOnly)) clear.write("5");
        baseKb_ = statusKb("VmRSS");
    }
    double addedMB() const { return std::max(0L, statusKb("VmHWM") - baseKb_) / 1024.0; }

private:
    long baseKb_;
};

struct YesBoxes : vb::MessageBoxService {
    int show(const QString&, const QString&, int) override { return vb::vbYes; }
    void about(const QString&, const QString&) override {}
};

struct ToPrinter : vb::DialogService {
    QString file; // empty: the recording printer's printer
    std::optional<QString> open(const vb::OpenRequest&) override { return std::nullopt; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override {
        vb::PrinterChoice c;
        if (file.isEmpty()) c.printerName = QStringLiteral("Grabadora");
        else c.outputFile = file;
        return c;
    }
};

// The program folder: the database and config.ini.
struct Folder {
    QString path = QDir::tempPath() + "/velmarinda_listing_bench";
    Folder() {
        if (!QFileInfo::exists(benchPath())) generate(benchPath());
        QDir().mkpath(path);
        QFile config(path + "/config.ini");
        config.open(QIODevice::WriteOnly);
        config.write("FERROBANDA\r\n1\r\n");
    }
};

void BM_ListadoTodosLosClientes(benchmark::State& state) {
    static Folder folder;
    YesBoxes boxes;
    vb::InstalledEnvironment env({.messageBoxes = &boxes, .programFolder = folder.path});
    vel::BaseDatos = vel::Database::OpenDatabase(benchPath()).release();
    double peak = 0;
    int lines = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto w = std::make_unique<vel::Faclistado>();
        w->Load();
        PeakMemory memory;
        state.ResumeTiming();
        w->BotonListadofcl_Click();
        state.PauseTiming();
        peak = std::max(peak, memory.addedMB());
        lines = vb::Control<vb::LineList>(w.get(), QStringLiteral("Listapuntes"))->ListCount();
        w->BotonCerrarfcl_Click();
        w.reset();
        state.ResumeTiming();
    }
    delete vel::BaseDatos;
    vel::BaseDatos = nullptr;
    state.counters["lines"] = lines;
    state.counters["peak_added_MB"] = peak;
}
BENCHMARK(BM_ListadoTodosLosClientes)->Iterations(3)->Unit(benchmark::kMillisecond);

// arg 0: the recording printer; arg 1: a PDF file.
void BM_ListadoImprime37000Lineas(benchmark::State& state) {
    static Folder folder;
    YesBoxes boxes;
    ToPrinter dialogs;
    if (state.range(0) == 1) dialogs.file = folder.path + "/extracto.pdf";
    vb::PrintRecorder recorder;
    vb::InstalledEnvironment env({.messageBoxes = &boxes, .dialogs = &dialogs, .programFolder = folder.path,
                                  .printers = state.range(0) == 0 ? &recorder : nullptr});
    vel::BaseDatos = vel::Database::OpenDatabase(benchPath()).release();
    auto w = std::make_unique<vel::Faclistado>();
    w->Load();
    vb::SetValue(vb::Control<QCheckBox>(w.get(), QStringLiteral("Checktotal")), 0);
    w->BotonListadofcl_Click();
    auto* lista = vb::Control<vb::LineList>(w.get(), QStringLiteral("Listapuntes"));
    QStringList primeras;
    for (int i = 0; i < 37000; ++i) primeras << lista->List(i);
    lista->Clear();
    lista->AddItems(primeras);
    int pages = 0;
    for (auto _ : state) {
        recorder.clear();
        w->BotonImprimirfcl_Click();
        pages = state.range(0) == 0 ? recorder.last().pages() : 0;
    }
    if (state.range(0) == 1) state.counters["pdf_MB"] = QFileInfo(dialogs.file).size() / 1048576.0;
    else state.counters["pages"] = pages;
    w->BotonCerrarfcl_Click();
    w.reset();
    delete vel::BaseDatos;
    vel::BaseDatos = nullptr;
}
BENCHMARK(BM_ListadoImprime37000Lineas)->Arg(0)->Arg(1)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

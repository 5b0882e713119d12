// Database care and the invoice's import, timed on their real windows:
//   - Compactar on a database of N MB (a filler table of rows of about 1 KB,
//     a third of them deleted), with the number of moves of the bar;
//   - Importar of a sheet of 2,000 rows of known products (no question
//     asked), into a new invoice of ORTA.
// The databases and sheets are made in a temporary folder for each run.
//
// Run: build/bin/velbench_windows --benchmark_filter='Compactar|Importar'
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "dbcare/fcompactar.h"
#include "runtime/common_dialog.h"
#include "runtime/environment.h"
#include "runtime/msgbox.h"
#include "runtime/progressbar.h"
#include "sales/document_totals.h"
#include "sales/formfacturaventa.h"
#include "support/workbook_writer.h"

#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

class Boxes : public vb::MessageBoxService {
public:
    int shown = 0;
    int show(const QString&, const QString&, int) override {
        ++shown;
        return vb::vbNo;
    }
    void about(const QString&, const QString&) override {}
};

class Dialogs : public vb::DialogService {
public:
    QString file;
    std::optional<QString> open(const vb::OpenRequest&) override { return file; }
    std::optional<vb::PrinterChoice> printer(const vb::PrinterRequest&) override { return std::nullopt; }
};

void Compactar(benchmark::State& state) {
    const int megabytes = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir dir;
        Boxes boxes;
        vb::InstalledEnvironment env({.messageBoxes = &boxes, .programFolder = dir.path()});
        const QString datos = dir.filePath("datos.mdb");
        vel::schema::CreateEmptyDatabase(datos);
        vel::BaseDatos = vel::Database::OpenDatabase(datos).release();
        sqlite3* h = vel::BaseDatos->handle();
        sqlite3_exec(h, "CREATE TABLE relleno (id INTEGER PRIMARY KEY, texto TEXT)", nullptr, nullptr, nullptr);
        const QByteArray fill = QStringLiteral("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c WHERE x < %1) "
                                               "INSERT INTO relleno SELECT x, hex(randomblob(500)) FROM c")
                                    .arg(megabytes * 1000)
                                    .toUtf8();
        sqlite3_exec(h, fill.constData(), nullptr, nullptr, nullptr);
        sqlite3_exec(h, "DELETE FROM relleno WHERE id % 3 = 0", nullptr, nullptr, nullptr);
        auto* w = new vel::Fcompactar;
        w->Load();
        int moves = 0;
        QObject::connect(w->ProgressBar1, &QProgressBar::valueChanged, [&moves](int) { ++moves; });
        state.ResumeTiming();
        w->botonuciniciar_Click();
        state.PauseTiming();
        state.counters["bar_moves"] = moves;
        state.counters["errors"] = boxes.shown;
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
        state.ResumeTiming();
    }
}
BENCHMARK(Compactar)->Arg(16)->Arg(64)->Arg(256)->Unit(benchmark::kMillisecond)->Iterations(1);

void Importar(benchmark::State& state) {
    const int filas = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir dir;
        Boxes boxes;
        Dialogs dialogs;
        vb::InstalledEnvironment env({.messageBoxes = &boxes, .dialogs = &dialogs, .programFolder = dir.path()});
        QFile cfg(dir.filePath("config.ini"));
        cfg.open(QIODevice::WriteOnly);
        cfg.write("ORTA,NORTE\r\n");
        cfg.close();
        const QString datos = dir.filePath("datos.mdb");
        vel::schema::CreateEmptyDatabase(datos);
        vel::BaseDatos = vel::Database::OpenDatabase(datos).release();
        vel::BaseDatos->Execute("INSERT INTO clientes VALUES ('C002', '87654321X', 'ANA', 'RUIZ', 'ANA RUIZ', 'PLAZA 2', 'TOLEDO', 'TOLEDO', 'ESPAÑOLA', 45001, 0, 0, 0, 0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '', '', 0, 0, 0, 0, 'CON', 1, 0, 0, 0, 1, '', 0, 1, '', 'ANA RUIZ', '01/02/2024', '', '')");
        veltest::Hoja hoja = {{"Ref", "Desc", "Uds", "Precio", "Dto"}};
        for (int i = 0; i < filas; ++i) {
            const QString ref = QStringLiteral("REF%1").arg(i);
            vel::BaseDatos->Execute("INSERT INTO productos VALUES ('01', '01', '01', '01', '" + ref + "', 'PRODUCTO " +
                                    QString::number(i) + "', '', '', '', '', 0, 12.1, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '', '', '', '', '', '', '', 1)");
            hoja.push_back({ref, "PRODUCTO " + QString::number(i), "2", "10", "0"});
        }
        dialogs.file = dir.filePath("importacion/pedido.xlsx");
        veltest::WriteWorkbook(dialogs.file, hoja);
        auto* w = new vel::FormFacturaVenta;
        w->Load();
        w->show();
        w->findChild<QPushButton*>("Commandnuevo")->click();
        state.ResumeTiming();
        w->CommandImportar_Click();
        state.PauseTiming();
        state.counters["lines"] = w->Lineas()->Gridfacturas->Rows() - 1;
        state.counters["questions"] = boxes.shown;
        w->Unload();
        delete w;
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
        state.ResumeTiming();
    }
}
BENCHMARK(Importar)->Arg(2000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

// The products window itself, on the shop of products_bench.cpp (500,000
// products) and its catalogue of 300,000 articles: CargarDatos of a leaf of
// 5,000 products into ListArticulos, and the search with the three fields
// empty, which lists the whole catalogue into ComboCodigoProducto with the
// progress bar moving and DoEvents after each article.
//
// Run headless: QT_QPA_PLATFORM=offscreen build/bin/velbench --benchmark_filter=Window
// (the shop and the catalogue are made by the benchmarks of products_bench.cpp
// when missing: run those first).
#include "core/record_store.h"
#include "core/session.h"
#include "masterdata/farticulos.h"
#include "runtime/app.h"
#include "runtime/listbox.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

struct Ventana {
    QTemporaryDir dir;
    std::unique_ptr<vel::Database> db;
    std::unique_ptr<vel::Farticulos> w;
    bool ok = false;
    Ventana() {
        static int argc = 1;
        static char name[] = "velbench";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance()) new QApplication(argc, argv);
        const QString shop = QStringLiteral("/tmp/velmarinda_products_bench.mdb");
        const QString catalogue = QStringLiteral("/tmp/velmarinda_catalogue_bench/articulo.dbf");
        if (!QFileInfo::exists(shop) || !QFileInfo::exists(catalogue)) return;
        vb::SetAppPath(dir.path());
        QFile config(dir.filePath("config.ini"));
        config.open(QIODevice::WriteOnly);
        config.write("FERROBANDA\r\n");
        config.close();
        QDir(dir.path()).mkpath("c/cadenart");
        QFile::link(catalogue, dir.filePath("c/cadenart/articulo.dbf"));
        db = vel::Database::OpenDatabase(shop);
        vel::BaseDatos = db.get();
        w = std::make_unique<vel::Farticulos>();
        w->Load();
        ok = true;
    }
};

Ventana& ventana() {
    static Ventana v;
    return v;
}

void elegir(QWidget* w, const char* combo, const QString& entrada) {
    auto* c = vb::Control<vb::ComboBox>(w, QString::fromLatin1(combo));
    c->Clear();
    c->AddItem(entrada);
    c->SetListIndex(0);
}

void BM_Window_CargarDatos5000(benchmark::State& state) {
    Ventana& v = ventana();
    if (!v.ok) {
        state.SkipWithError("run the products benchmarks first (no shop or catalogue in /tmp)");
        return;
    }
    elegir(v.w.get(), "Combodivision", "01/D");
    elegir(v.w.get(), "Combogfamilia", "01/G");
    elegir(v.w.get(), "Combofamilia", "01/F");
    elegir(v.w.get(), "Comboarticulo", "01/A");
    auto* lista = vb::Control<vb::ListBox>(v.w.get(), "ListArticulos");
    for (auto _ : state) v.w->CargarDatos();
    state.counters["rows"] = lista->ListCount();
}
BENCHMARK(BM_Window_CargarDatos5000)->Unit(benchmark::kMillisecond)->MinTime(2);

void BM_Window_WholeCatalogueIntoTheCombo(benchmark::State& state) {
    Ventana& v = ventana();
    if (!v.ok) {
        state.SkipWithError("run the products benchmarks first (no shop or catalogue in /tmp)");
        return;
    }
    auto* combo = vb::Control<vb::ComboBox>(v.w.get(), "ComboCodigoProducto");
    for (auto _ : state) v.w->CommandBuscarArticuloProveedor_Click();
    state.counters["entries"] = combo->ListCount();
}
BENCHMARK(BM_Window_WholeCatalogueIntoTheCombo)->Unit(benchmark::kMillisecond)->Iterations(2);

} // namespace

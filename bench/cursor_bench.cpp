// What an open cursor costs in time and memory, on the walks the windows make:
//  - walking the 50,000 customers with SELECT * (the customer and supplier
//    windows fill four lists that way), reading the fields a list shows;
//  - opening a SELECT over 500,000 products and then writing one UPDATE (a
//    window that leaves its cursor open and saves something);
//  - the bulk change of all prices over 200,000 products: walk the products,
//    one autocommit UPDATE of each product's price while the cursor is open,
//    as the products window's "change all prices" button does.
//
// Memory is the peak resident size the operation adds to the process (the
// kernel's high-water mark, reset before each run), so the engine's page
// cache filling up counts too. Each run opens its own connection, as the
// program opens datos.mdb at start, so nothing is warm in the process.
//
// Run: build/bin/velbench --benchmark_filter='Cursor|BulkPrice'
//
// Figures on the development machine (2 cores shared with other work, load
// about 7: wall time is some three times the CPU time), when cursors kept
// every row they read and read in the rest before a write, and since they
// hold the current row and the keys (see record_store.cpp):
//
//                                          kept every row          keys only
//                                          wall   CPU    peak      wall   CPU    peak
//   walk 50,000 customers, SELECT *        536ms  252ms  137 MB    265ms  127ms   11 MB
//     the same ORDER BY nif_cliente        525ms  259ms  138 MB    304ms  129ms   12 MB
//   SELECT * of 500,000 products, UPDATE  2770ms 1345ms  832 MB    181ms   53ms   14 MB
//     the price query's two columns        416ms  206ms  113 MB    265ms  118ms   39 MB
//   all prices of 200,000 products        10.8s  2.95s   60 MB    11.9s  3.50s   29 MB
//
// The bulk change pays for reading each row again by its key once the first
// UPDATE has let go of the query (about 3 microseconds a row); its log stays
// at 4 MB either way. The peak of the price query over 500,000 products is
// mostly the engine's page cache (32 MB at most), filled by the walk of the
// keys.
#include "shop.h"
#include "core/record_store.h"
#include "runtime/vb.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QFileInfo>

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>

namespace {

using namespace velbench;

// A line of /proc/self/status in kilobytes ("VmRSS", "VmHWM").
long statusKb(const char* field) {
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly)) return 0;
    const QByteArray key = QByteArray(field) + ':';
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith(key)) return line.mid(key.size()).trimmed().split(' ').value(0).toLong();
    return 0;
}

// Measures the peak resident memory added between start and peakAddedMB.
class PeakMemory {
public:
    PeakMemory() {
        malloc_trim(0);
        QFile clear(QStringLiteral("/proc/self/clear_refs"));
        if (clear.open(QIODevice::WriteOnly)) clear.write("5"); // resets the high-water mark
        baseKb_ = statusKb("VmRSS");
    }
    double addedMB() const { return std::max(0L, statusKb("VmHWM") - baseKb_) / 1024.0; }

private:
    long baseKb_;
};

// ---- Walking every customer ------------------------------------------------

// arg 0: in the table's order; arg 1: ORDER BY the NIF, as a list is filled.
void BM_CursorWalkCustomers(benchmark::State& state) {
    Shop(); // made on first use, outside the measurement
    const QString sql = state.range(0) == 0 ? QStringLiteral("SELECT * FROM clientes")
                                            : QStringLiteral("SELECT * FROM clientes ORDER BY nif_cliente");
    double peak = 0;
    long rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        PeakMemory memory;
        state.ResumeTiming();
        {
            auto db = vel::Database::OpenDatabase(ShopPath());
            auto rs = db->OpenRecordset(sql);
            rows = 0;
            while (!rs->Eof()) {
                benchmark::DoNotOptimize(rs->Fields(QStringLiteral("nif_cliente")));
                benchmark::DoNotOptimize(rs->Fields(QStringLiteral("codigo_cliente")));
                benchmark::DoNotOptimize(rs->Fields(QStringLiteral("nombrefiscal_cliente")));
                benchmark::DoNotOptimize(rs->Fields(QStringLiteral("nombrecomercial_cliente")));
                ++rows;
                rs->MoveNext();
            }
            peak = std::max(peak, memory.addedMB());
        }
    }
    state.counters["rows"] = static_cast<double>(rows);
    state.counters["peak_added_MB"] = peak;
}
BENCHMARK(BM_CursorWalkCustomers)->Arg(0)->Arg(1)->Iterations(3)->Unit(benchmark::kMillisecond);

// ---- A large SELECT left open, then one write ----------------------------------

// arg 0: SELECT * of every product in reference order; arg 1: the two columns
// and the condition of the "change all prices" query.
void BM_CursorLargeSelectThenUpdate(benchmark::State& state) {
    LargeCatalogue();
    const QString sql =
        state.range(0) == 0
            ? QStringLiteral("SELECT * FROM productos ORDER BY referencia_productos")
            : QStringLiteral("SELECT referencia_productos, pvp_neto_productos FROM productos WHERE "
                             "referencia_productos <> '' AND pvp_neto_productos > 0 ORDER BY referencia_productos");
    double peak = 0;
    int step = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto db = vel::Database::OpenDatabase(LargeCataloguePath());
        PeakMemory memory;
        state.ResumeTiming();
        {
            auto rs = db->OpenRecordset(sql);
            const QString ref = rs->Fields(QStringLiteral("referencia_productos")).str();
            db->Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = %1 WHERE referencia_productos = '%2'")
                            .arg(10 + step++ % 7)
                            .arg(ref));
            rs->MoveNext();
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("pvp_neto_productos")));
            peak = std::max(peak, memory.addedMB());
        }
        state.PauseTiming();
        db.reset();
        state.ResumeTiming();
    }
    state.counters["peak_added_MB"] = peak;
}
BENCHMARK(BM_CursorLargeSelectThenUpdate)->Arg(0)->Arg(1)->Iterations(3)->Unit(benchmark::kMillisecond);

// ---- The bulk change of all prices ----------------------------------------------

// Walks every product with a price and writes its new price, 1% up, with all
// its digits, one autocommit UPDATE each while the cursor stays open.
void BM_BulkPriceChangeAllProducts(benchmark::State& state) {
    Shop();
    const QString walPath = ShopPath() + QStringLiteral("-wal");
    double peak = 0;
    qint64 largestWal = 0;
    long updates = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto db = vel::Database::OpenDatabase(ShopPath());
        PeakMemory memory;
        state.ResumeTiming();
        {
            auto rs = db->OpenRecordset(QStringLiteral(
                "SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos <> '' "
                "AND pvp_neto_productos > 0 ORDER BY referencia_productos"));
            updates = 0;
            while (!rs->Eof()) {
                const double nuevo = rs->Fields(QStringLiteral("pvp_neto_productos")).num() * (vb::Val("1") / 100 + 1);
                db->Execute("UPDATE productos SET pvp_neto_productos = " + vb::CStr(nuevo) +
                            " WHERE referencia_productos = '" + rs->Fields(QStringLiteral("referencia_productos")).str() +
                            "'");
                ++updates;
                if (updates % 1000 == 0) largestWal = std::max(largestWal, QFileInfo(walPath).size());
                rs->MoveNext();
            }
            peak = std::max(peak, memory.addedMB());
        }
        state.PauseTiming();
        db.reset();
        state.ResumeTiming();
    }
    state.counters["updates"] = static_cast<double>(updates);
    state.counters["peak_added_MB"] = peak;
    state.counters["largest_wal_MB"] = static_cast<double>(largestWal) / (1024.0 * 1024.0);
}
BENCHMARK(BM_BulkPriceChangeAllProducts)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

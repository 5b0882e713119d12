// Statements per second through the record store against the engine's own C
// interface, for the statements the windows send most: INSERT of a delivery
// note line, SELECT of a customer by NIF reading every field, UPDATE of a
// product's price by reference (each its own autocommit, as the bulk price
// change does), and the search of products by description with LIKE.
//
// The database is the benchmarks' shop of realistic size (see shop.h).
//
// The raw side runs the very same SQL text with sqlite3_prepare_v2, step and
// finalize on the same connection (so with the same collation and LIKE), and
// reads the columns by index: the difference is what the record store adds
// (dialect, one-statement check, values as variants, fields by name).
//
// Also measured: the cost of a one-statement commit under the engine's default
// settings (rollback journal, full sync) against the settings the store uses
// (write-ahead log, synchronous=NORMAL), and the size the log reaches when
// thousands of UPDATEs run while a query is still open.
//
// Run: build/bin/velbench [--benchmark_filter=...]
#include "shop.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "runtime/errors.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using namespace velbench;

// Raw C interface: the same text, prepared, stepped to the end, finalized.
void rawExecute(sqlite3* h, const QString& sql) {
    const QByteArray b = sql.toUtf8();
    sqlite3_stmt* st = nullptr;
    Check(sqlite3_prepare_v2(h, b.constData(), static_cast<int>(b.size()), &st, nullptr), h, "prepare");
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    Check(rc, h, "step");
    sqlite3_finalize(st);
}

// ---- INSERT: one delivery note line, autocommit -------------------------

QString lineInsert(int number, int line) {
    return QStringLiteral("INSERT INTO detalle_albaran_venta VALUES (09, 'AV', 2030, %1, '', 'R%2', 'TORNILLO ACERO 5 MM', 3, "
                          "'12.5', '', '', '37.5', 0, 0, '37.5', '1', 0, 0, '00', '00', '00', '00', %1, 01, '1')")
        .arg(number)
        .arg(line, 7, 10, QLatin1Char('0'));
}

void cleanInserted(sqlite3* h) {
    rawExecute(h, QStringLiteral("DELETE FROM detalle_albaran_venta WHERE tienda_detalle_albaran_venta = 9"));
}

void BM_Insert_RecordStore(benchmark::State& state) {
    vel::Database& db = Shop();
    int i = 0;
    for (auto _ : state) {
        db.Execute(lineInsert(1 + i / 10, i));
        ++i;
    }
    state.SetItemsProcessed(state.iterations());
    cleanInserted(db.handle());
}
BENCHMARK(BM_Insert_RecordStore)->Unit(benchmark::kMicrosecond)->MinTime(2);

void BM_Insert_Raw(benchmark::State& state) {
    sqlite3* h = Shop().handle();
    int i = 0;
    for (auto _ : state) {
        rawExecute(h, lineInsert(1 + i / 10, i));
        ++i;
    }
    state.SetItemsProcessed(state.iterations());
    cleanInserted(h);
}
BENCHMARK(BM_Insert_Raw)->Unit(benchmark::kMicrosecond)->MinTime(2);

// ---- SELECT by key, every field read -------------------------------------

const QStringList& customerColumns() {
    static const QStringList names = [] {
        QStringList n;
        for (const auto& c : vel::schema::FindTable(QStringLiteral("clientes"))->columns) n << QLatin1String(c.name);
        return n;
    }();
    return names;
}

void BM_SelectByKey_RecordStore(benchmark::State& state) {
    vel::Database& db = Shop();
    const QStringList& columns = customerColumns();
    Lcg rnd(7);
    for (auto _ : state) {
        auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM clientes WHERE nif_cliente = '%1'").arg(Nif(rnd.below(kShop.customers))));
        if (rs->Eof()) state.SkipWithError("customer not found");
        for (const QString& c : columns) benchmark::DoNotOptimize(rs->Fields(c));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SelectByKey_RecordStore)->Unit(benchmark::kMicrosecond)->MinTime(2);

void BM_SelectByKey_Raw(benchmark::State& state) {
    sqlite3* h = Shop().handle();
    Lcg rnd(7);
    for (auto _ : state) {
        const QByteArray sql =
            QStringLiteral("SELECT * FROM clientes WHERE nif_cliente = '%1'").arg(Nif(rnd.below(kShop.customers))).toUtf8();
        sqlite3_stmt* st = nullptr;
        Check(sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &st, nullptr), h, "prepare");
        if (sqlite3_step(st) != SQLITE_ROW) state.SkipWithError("customer not found");
        const int n = sqlite3_column_count(st);
        for (int c = 0; c < n; ++c) {
            if (sqlite3_column_type(st, c) == SQLITE_TEXT) benchmark::DoNotOptimize(sqlite3_column_text(st, c));
            else benchmark::DoNotOptimize(sqlite3_column_double(st, c));
        }
        sqlite3_step(st);
        sqlite3_finalize(st);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SelectByKey_Raw)->Unit(benchmark::kMicrosecond)->MinTime(2);

// ---- UPDATE by key, autocommit --------------------------------------------

QString priceUpdate(int product, int step) {
    return QStringLiteral("UPDATE productos SET pvp_neto_productos = %1 WHERE referencia_productos = '%2'")
        .arg(1.5 + step % 1000 / 100.0)
        .arg(Reference(product));
}

void BM_UpdateByKey_RecordStore(benchmark::State& state) {
    vel::Database& db = Shop();
    Lcg rnd(11);
    int i = 0;
    for (auto _ : state) db.Execute(priceUpdate(rnd.below(kShop.products), i++));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UpdateByKey_RecordStore)->Unit(benchmark::kMicrosecond)->MinTime(2);

void BM_UpdateByKey_Raw(benchmark::State& state) {
    sqlite3* h = Shop().handle();
    Lcg rnd(11);
    int i = 0;
    for (auto _ : state) rawExecute(h, priceUpdate(rnd.below(kShop.products), i++));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UpdateByKey_Raw)->Unit(benchmark::kMicrosecond)->MinTime(2);

// ---- LIKE search over the products -----------------------------------------
// Every row found is read (four fields): the heavy case, some thousands of
// rows per search. The raw side only looks at the engine's values; the record
// store turns each into a variant and keeps the rows read so far.

const char* const kSearches[] = {"NILL", "ACERO 5", "CAÑA", "LATON", "BROCHA ROJO", "ZZZ"};

QString likeSearch(int i) {
    return QStringLiteral("SELECT referencia_productos, descripcion_productos, pvp_neto_productos, codigo_iva_productos "
                          "FROM productos WHERE descripcion_productos LIKE '*%1*'")
        .arg(QString::fromUtf8(kSearches[i % 6]));
}

void BM_LikeSearch_RecordStore(benchmark::State& state) {
    vel::Database& db = Shop();
    int i = 0;
    long rows = 0;
    for (auto _ : state) {
        auto rs = db.OpenRecordset(likeSearch(i++));
        while (!rs->Eof()) {
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("referencia_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("descripcion_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("pvp_neto_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("codigo_iva_productos")));
            ++rows;
            rs->MoveNext();
        }
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["rows_per_search"] = static_cast<double>(rows) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_LikeSearch_RecordStore)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_LikeSearch_Raw(benchmark::State& state) {
    sqlite3* h = Shop().handle();
    int i = 0;
    long rows = 0;
    for (auto _ : state) {
        const QByteArray sql = likeSearch(i++).toUtf8();
        sqlite3_stmt* st = nullptr;
        Check(sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &st, nullptr), h, "prepare");
        while (sqlite3_step(st) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_text(st, 0));
            benchmark::DoNotOptimize(sqlite3_column_text(st, 1));
            benchmark::DoNotOptimize(sqlite3_column_double(st, 2));
            benchmark::DoNotOptimize(sqlite3_column_double(st, 3));
            ++rows;
        }
        sqlite3_finalize(st);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["rows_per_search"] = static_cast<double>(rows) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_LikeSearch_Raw)->Unit(benchmark::kMillisecond)->MinTime(3);

// The search of the ticket sale: the first product whose description holds
// the text, one row read (a search with no match reads the whole table).
void BM_LikeFirstRow_RecordStore(benchmark::State& state) {
    vel::Database& db = Shop();
    int i = 0;
    for (auto _ : state) {
        auto rs = db.OpenRecordset(likeSearch(i++));
        if (!rs->Eof()) {
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("referencia_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("descripcion_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("pvp_neto_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("codigo_iva_productos")));
        }
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LikeFirstRow_RecordStore)->Unit(benchmark::kMicrosecond)->MinTime(2);

void BM_LikeFirstRow_Raw(benchmark::State& state) {
    sqlite3* h = Shop().handle();
    int i = 0;
    for (auto _ : state) {
        const QByteArray sql = likeSearch(i++).toUtf8();
        sqlite3_stmt* st = nullptr;
        Check(sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &st, nullptr), h, "prepare");
        if (sqlite3_step(st) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_text(st, 0));
            benchmark::DoNotOptimize(sqlite3_column_text(st, 1));
            benchmark::DoNotOptimize(sqlite3_column_double(st, 2));
            benchmark::DoNotOptimize(sqlite3_column_double(st, 3));
        }
        sqlite3_finalize(st);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LikeFirstRow_Raw)->Unit(benchmark::kMicrosecond)->MinTime(2);

// The engine's own LIKE ('%' wild card, ASCII case only) on a plain connection,
// for the price of the shop's LIKE and its Spanish letters.
void BM_LikeSearch_EngineBuiltinLike(benchmark::State& state) {
    Shop();
    sqlite3* h = nullptr;
    sqlite3_open_v2(ShopPath().toUtf8().constData(), &h, SQLITE_OPEN_READONLY, nullptr);
    int i = 0;
    for (auto _ : state) {
        QString sql = likeSearch(i++);
        sql.replace(QLatin1Char('*'), QLatin1Char('%'));
        const QByteArray b = sql.toUtf8();
        sqlite3_stmt* st = nullptr;
        Check(sqlite3_prepare_v2(h, b.constData(), static_cast<int>(b.size()), &st, nullptr), h, "prepare");
        while (sqlite3_step(st) == SQLITE_ROW) benchmark::DoNotOptimize(sqlite3_column_text(st, 0));
        sqlite3_finalize(st);
    }
    sqlite3_close(h);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LikeSearch_EngineBuiltinLike)->Unit(benchmark::kMillisecond)->MinTime(3);

// ---- Commit settings: one-statement UPDATEs on a small shop ----------------

// arg 0: the engine's defaults (rollback journal, synchronous=FULL);
// arg 1: the store's settings (write-ahead log, synchronous=NORMAL).
void BM_CommitSettings(benchmark::State& state) {
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("datos.mdb"));
    {
        vel::schema::CreateEmptyDatabase(path);
        auto db = vel::Database::OpenDatabase(path);
        sqlite3* h = db->handle();
        sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr);
        for (int i = 0; i < 20000; ++i)
            rawExecute(h, QStringLiteral("INSERT INTO productos VALUES ('01','01','01','01','%1','TORNILLO','','','','',1,2,0,"
                                         "0,0,0,0,0,0,'','',0,0,'','','','','','','',1)")
                              .arg(Reference(i)));
        sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr);
    }
    auto db = vel::Database::OpenDatabase(path);
    sqlite3* h = db->handle();
    if (state.range(0) == 0) {
        sqlite3_exec(h, "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
        sqlite3_exec(h, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    }
    Lcg rnd(3);
    int i = 0;
    for (auto _ : state) db->Execute(priceUpdate(rnd.below(20000), i++));
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(state.range(0) == 0 ? "rollback journal, synchronous=FULL" : "WAL, synchronous=NORMAL");
}
BENCHMARK(BM_CommitSettings)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)->MinTime(2);

// ---- The log while a query stays open --------------------------------------

// The bulk price change: walk all products, one UPDATE per row while the query
// is still open. arg 0: through the record store; arg 1: with the engine's
// statement held open, which the store avoids. Reports the largest log seen.
void BM_WalWithOpenCursor(benchmark::State& state) {
    vel::Database& db = Shop();
    const QString walPath = db.path() + QStringLiteral("-wal");
    const int updates = static_cast<int>(state.range(1));
    const QString query = QStringLiteral("SELECT referencia_productos, pvp_neto_productos FROM productos WHERE "
                                         "referencia_productos <> '' AND pvp_neto_productos > 0 ORDER BY referencia_productos");
    qint64 largest = 0;
    for (auto _ : state) {
        sqlite3_wal_checkpoint_v2(db.handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
        if (state.range(0) == 0) {
            auto rs = db.OpenRecordset(query);
            for (int i = 0; i < updates && !rs->Eof(); ++i) {
                db.Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = %1 WHERE referencia_productos = '%2'")
                               .arg(rs->Fields(QStringLiteral("pvp_neto_productos")).num() / 1.16 * 1.21, 0, 'g', 17)
                               .arg(rs->Fields(QStringLiteral("referencia_productos")).str()));
                if (i % 100 == 0) largest = std::max(largest, QFileInfo(walPath).size());
                rs->MoveNext();
            }
        } else {
            sqlite3* h = db.handle();
            sqlite3_stmt* st = nullptr;
            Check(sqlite3_prepare_v2(h, query.toUtf8().constData(), -1, &st, nullptr), h, "prepare");
            for (int i = 0; i < updates && sqlite3_step(st) == SQLITE_ROW; ++i) {
                rawExecute(h, QStringLiteral("UPDATE productos SET pvp_neto_productos = %1 WHERE referencia_productos = '%2'")
                                  .arg(sqlite3_column_double(st, 1) / 1.16 * 1.21, 0, 'g', 17)
                                  .arg(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)))));
                if (i % 100 == 0) largest = std::max(largest, QFileInfo(walPath).size());
            }
            sqlite3_finalize(st);
        }
        largest = std::max(largest, QFileInfo(walPath).size());
    }
    state.counters["largest_wal_MB"] = static_cast<double>(largest) / (1024.0 * 1024.0);
    state.SetLabel(state.range(0) == 0 ? "record store cursor" : "engine statement held open");
    sqlite3_wal_checkpoint_v2(db.handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
}
BENCHMARK(BM_WalWithOpenCursor)->Args({0, 20000})->Args({1, 20000})->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

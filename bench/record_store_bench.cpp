// Statements per second through the record store against the engine's own C
// interface, for the statements the windows send most: INSERT of a delivery
// note line, SELECT of a customer by NIF reading every field, UPDATE of a
// product's price by reference (each its own autocommit, as the bulk price
// change does), and the search of products by description with LIKE.
//
// The database is a shop of realistic size: 200,000 products, 50,000
// customers, 100,000 delivery notes with 1,000,000 lines. It is made once into
// /tmp/velmarinda_bench.mdb (VELMARINDA_BENCH_DB overrides the path) and
// reused while it is there.
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

constexpr int kProducts = 200000;
constexpr int kCustomers = 50000;
constexpr int kNotes = 100000;
constexpr int kLinesPerNote = 10;

QString benchPath() {
    const char* env = std::getenv("VELMARINDA_BENCH_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_bench.mdb");
}

// A small fixed pseudo-random sequence, the same on every run.
struct Lcg {
    uint64_t s;
    explicit Lcg(uint64_t seed) : s(seed) {}
    uint32_t next() {
        s = s * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<uint32_t>(s >> 33);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<uint32_t>(n)); }
};

const char* const kWords1[] = {"TORNILLO", "TUERCA", "ARANDELA", "BROCA", "TACO", "CLAVO", "BISAGRA", "CERRADURA",
                               "MARTILLO", "ALICATE", "LLAVE", "DESTORNILLADOR", "CAÑA", "MANGUERA", "PINTURA", "BROCHA"};
const char* const kWords2[] = {"ACERO", "LATÓN", "INOX", "MADERA", "PLÁSTICO", "GALVANIZADO", "NEGRO", "BLANCO",
                               "ROJO", "CROMADO", "ALUMINIO", "HIERRO"};
const char* const kNames[] = {"JOSÉ", "MARÍA", "ANTONIO", "CARMEN", "MANUEL", "LUCÍA", "FRANCISCO", "NURIA",
                              "ÍÑIGO", "BEGOÑA", "PEDRO", "ANA"};
const char* const kSurnames[] = {"GARCÍA", "LÓPEZ", "MUÑOZ", "PEÑA", "IBÁÑEZ", "SÁNCHEZ", "CASTAÑO", "NÚÑEZ",
                                 "RUIZ", "ORDÓÑEZ", "GIL", "YÁÑEZ"};

QString reference(int i) { return QStringLiteral("R%1").arg(i, 7, 10, QLatin1Char('0')); }
QString nif(int i) { return QStringLiteral("%1%2").arg(10000000 + i).arg(QChar('A' + i % 23)); }

void check(int rc, sqlite3* db, const char* what) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
        std::fprintf(stderr, "%s: %s\n", what, sqlite3_errmsg(db));
        std::abort();
    }
}

void bindText(sqlite3_stmt* st, int i, const QString& s) {
    const QByteArray b = s.toUtf8();
    sqlite3_bind_text(st, i, b.constData(), static_cast<int>(b.size()), SQLITE_TRANSIENT);
}

sqlite3_stmt* prepareInsert(sqlite3* h, const char* table, int columns) {
    QString sql = QStringLiteral("INSERT INTO %1 VALUES (").arg(QLatin1String(table));
    for (int i = 0; i < columns; ++i) sql += (i ? QStringLiteral(", ?") : QStringLiteral("?"));
    sql += QLatin1Char(')');
    sqlite3_stmt* st = nullptr;
    check(sqlite3_prepare_v2(h, sql.toUtf8().constData(), -1, &st, nullptr), h, "prepare insert");
    return st;
}

// Binds the values of one row by the kinds of the table: numbers from `num`,
// texts from `text`, the column index given to each.
template <typename Num, typename Text>
void insertRow(sqlite3* h, sqlite3_stmt* st, const vel::schema::Table& t, Num num, Text text) {
    for (size_t c = 0; c < t.columns.size(); ++c) {
        const int i = static_cast<int>(c) + 1;
        if (t.columns[c].kind == vel::schema::Kind::Number) sqlite3_bind_double(st, i, num(c));
        else bindText(st, i, text(c));
    }
    check(sqlite3_step(st), h, t.name);
    sqlite3_reset(st);
}

void generate(const QString& path) {
    const auto started = std::chrono::steady_clock::now();
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    sqlite3* h = db->handle();
    check(sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr), h, "begin");
    Lcg rnd(42);

    const auto& productos = *vel::schema::FindTable(QStringLiteral("productos"));
    sqlite3_stmt* ins = prepareInsert(h, "productos", 31);
    for (int i = 0; i < kProducts; ++i) {
        const QString desc = QStringLiteral("%1 %2 %3 MM").arg(QString::fromUtf8(kWords1[rnd.below(16)]),
                                                               QString::fromUtf8(kWords2[rnd.below(12)]))
                                 .arg(rnd.below(100));
        const double price = 0.5 + rnd.below(20000) / 100.0;
        insertRow(
            h, ins, productos,
            [&](size_t c) {
                if (c == 10) return price / 2;
                if (c == 11) return price;
                if (c == 30) return 1.0;
                return 0.0;
            },
            [&](size_t c) -> QString {
                switch (c) {
                case 0: return QStringLiteral("%1").arg(i % 10, 2, 10, QLatin1Char('0'));
                case 1: return QStringLiteral("%1").arg(i / 10 % 10, 2, 10, QLatin1Char('0'));
                case 2: return QStringLiteral("%1").arg(i / 100 % 10, 2, 10, QLatin1Char('0'));
                case 3: return QStringLiteral("%1").arg(i / 1000 % 10, 2, 10, QLatin1Char('0'));
                case 4: return reference(i);
                case 5: return desc;
                case 7: return QStringLiteral("MARCA%1").arg(i % 50);
                case 8: return QStringLiteral("M%1").arg(i % 300);
                case 25: return QStringLiteral("84%1").arg(1000000000LL + i * 7LL);
                default: return QString();
                }
            });
    }
    sqlite3_finalize(ins);

    const auto& clientes = *vel::schema::FindTable(QStringLiteral("clientes"));
    ins = prepareInsert(h, "clientes", 46);
    for (int i = 0; i < kCustomers; ++i) {
        const QString name = QString::fromUtf8(kNames[rnd.below(12)]);
        const QString surname = QStringLiteral("%1 %2").arg(QString::fromUtf8(kSurnames[rnd.below(12)]),
                                                            QString::fromUtf8(kSurnames[rnd.below(12)]));
        insertRow(
            h, ins, clientes,
            [&](size_t c) {
                if (c == 9) return 28000.0 + i % 999;
                if (c == 10) return 910000000.0 + i;
                return static_cast<double>(c % 3);
            },
            [&](size_t c) -> QString {
                switch (c) {
                case 0: return QStringLiteral("C%1").arg(i, 6, 10, QLatin1Char('0'));
                case 1: return nif(i);
                case 2: return name;
                case 3: return surname;
                case 4: return QStringLiteral("COMERCIAL %1").arg(i);
                case 5: return QStringLiteral("CALLE MAYOR %1").arg(i % 200);
                case 6: return QStringLiteral("MADRID");
                case 7: return QStringLiteral("MADRID");
                case 8: return QStringLiteral("ESPAÑOLA");
                case 26: return QStringLiteral("0049");
                case 27: return QStringLiteral("0012");
                case 32: return QStringLiteral("CON");
                case 42: return QStringLiteral("%1 %2").arg(name, surname);
                case 43: return QStringLiteral("%1/%2/20%3").arg(1 + i % 28, 2, 10, QLatin1Char('0')).arg(1 + i % 12, 2, 10, QLatin1Char('0')).arg(10 + i % 14);
                case 45: return QStringLiteral("ES12");
                default: return QString();
                }
            });
    }
    sqlite3_finalize(ins);

    const auto& cabecera = *vel::schema::FindTable(QStringLiteral("cabecera_albaran_venta"));
    const auto& detalle = *vel::schema::FindTable(QStringLiteral("detalle_albaran_venta"));
    sqlite3_stmt* insHead = prepareInsert(h, "cabecera_albaran_venta", 42);
    sqlite3_stmt* insLine = prepareInsert(h, "detalle_albaran_venta", 25);
    for (int n = 0; n < kNotes; ++n) {
        const double store = 1 + n % 3, year = 2020 + n / 20000, number = 1 + n / 3 % 6667;
        const int customer = rnd.below(kCustomers);
        insertRow(
            h, insHead, cabecera,
            [&](size_t c) {
                switch (c) {
                case 0: return store;
                case 2: return year;
                case 3: case 24: return number;
                case 7: return 1.0;
                case 33: return 100.0 + n % 900;
                case 37: return 21.0;
                default: return 0.0;
                }
            },
            [&](size_t c) -> QString {
                switch (c) {
                case 1: return QStringLiteral("AV");
                case 4: return QStringLiteral("%1/%2/%3").arg(1 + n % 28, 2, 10, QLatin1Char('0')).arg(1 + n % 12, 2, 10, QLatin1Char('0')).arg(year);
                case 10: return QStringLiteral("P");
                case 11: return nif(customer);
                case 12: return QStringLiteral("CLIENTE %1").arg(customer);
                case 18: return QStringLiteral("CON");
                case 40: return QStringLiteral("0");
                default: return QString();
                }
            });
        for (int l = 0; l < kLinesPerNote; ++l) {
            const int product = rnd.below(kProducts);
            const double units = 1 + rnd.below(10), price = 0.5 + rnd.below(20000) / 100.0;
            insertRow(
                h, insLine, detalle,
                [&](size_t c) {
                    switch (c) {
                    case 0: return store;
                    case 2: return year;
                    case 3: case 22: return number;
                    case 7: return units;
                    case 8: return price;
                    case 11: case 14: return units * price;
                    case 23: return 1.0;
                    default: return 0.0;
                    }
                },
                [&](size_t c) -> QString {
                    switch (c) {
                    case 1: return QStringLiteral("AV");
                    case 5: return reference(product);
                    case 6: return QStringLiteral("ARTICULO %1").arg(product);
                    case 15: case 24: return QStringLiteral("1");
                    case 18: case 19: case 20: case 21: return QStringLiteral("00");
                    default: return QString();
                    }
                });
        }
    }
    sqlite3_finalize(insHead);
    sqlite3_finalize(insLine);
    check(sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr), h, "commit");
    check(sqlite3_exec(h, "ANALYZE", nullptr, nullptr, nullptr), h, "analyze");
    sqlite3_wal_checkpoint_v2(h, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    const double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::fprintf(stderr, "generated %s in %.1f s\n", qPrintable(path), secs);
}

// The one shared database of the benchmarks, made on first use.
vel::Database& shop() {
    static std::unique_ptr<vel::Database> db = [] {
        const QString path = benchPath();
        if (!QFileInfo::exists(path)) generate(path);
        return vel::Database::OpenDatabase(path);
    }();
    return *db;
}

// Raw C interface: the same text, prepared, stepped to the end, finalized.
void rawExecute(sqlite3* h, const QString& sql) {
    const QByteArray b = sql.toUtf8();
    sqlite3_stmt* st = nullptr;
    check(sqlite3_prepare_v2(h, b.constData(), static_cast<int>(b.size()), &st, nullptr), h, "prepare");
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    check(rc, h, "step");
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
    vel::Database& db = shop();
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
    sqlite3* h = shop().handle();
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
    vel::Database& db = shop();
    const QStringList& columns = customerColumns();
    Lcg rnd(7);
    for (auto _ : state) {
        auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM clientes WHERE nif_cliente = '%1'").arg(nif(rnd.below(kCustomers))));
        if (rs->Eof()) state.SkipWithError("customer not found");
        for (const QString& c : columns) benchmark::DoNotOptimize(rs->Fields(c));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SelectByKey_RecordStore)->Unit(benchmark::kMicrosecond)->MinTime(2);

void BM_SelectByKey_Raw(benchmark::State& state) {
    sqlite3* h = shop().handle();
    Lcg rnd(7);
    for (auto _ : state) {
        const QByteArray sql =
            QStringLiteral("SELECT * FROM clientes WHERE nif_cliente = '%1'").arg(nif(rnd.below(kCustomers))).toUtf8();
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &st, nullptr), h, "prepare");
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
        .arg(reference(product));
}

void BM_UpdateByKey_RecordStore(benchmark::State& state) {
    vel::Database& db = shop();
    Lcg rnd(11);
    int i = 0;
    for (auto _ : state) db.Execute(priceUpdate(rnd.below(kProducts), i++));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_UpdateByKey_RecordStore)->Unit(benchmark::kMicrosecond)->MinTime(2);

void BM_UpdateByKey_Raw(benchmark::State& state) {
    sqlite3* h = shop().handle();
    Lcg rnd(11);
    int i = 0;
    for (auto _ : state) rawExecute(h, priceUpdate(rnd.below(kProducts), i++));
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
    vel::Database& db = shop();
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
    sqlite3* h = shop().handle();
    int i = 0;
    long rows = 0;
    for (auto _ : state) {
        const QByteArray sql = likeSearch(i++).toUtf8();
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &st, nullptr), h, "prepare");
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
    vel::Database& db = shop();
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
    sqlite3* h = shop().handle();
    int i = 0;
    for (auto _ : state) {
        const QByteArray sql = likeSearch(i++).toUtf8();
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, sql.constData(), static_cast<int>(sql.size()), &st, nullptr), h, "prepare");
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
    shop();
    sqlite3* h = nullptr;
    sqlite3_open_v2(benchPath().toUtf8().constData(), &h, SQLITE_OPEN_READONLY, nullptr);
    int i = 0;
    for (auto _ : state) {
        QString sql = likeSearch(i++);
        sql.replace(QLatin1Char('*'), QLatin1Char('%'));
        const QByteArray b = sql.toUtf8();
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, b.constData(), static_cast<int>(b.size()), &st, nullptr), h, "prepare");
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
                              .arg(reference(i)));
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
    vel::Database& db = shop();
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
            check(sqlite3_prepare_v2(h, query.toUtf8().constData(), -1, &st, nullptr), h, "prepare");
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

// The products window and the lookups of the counter, on a shop of 500,000
// products (100 leaves of 5,000), and the chain's catalogue of 300,000
// articles written with shapelib. Each figure is measured against the
// engine's C interface (SQLite) or shapelib itself, in the same run:
//
//  - the lookup of a product by reference or by any of its three bar codes,
//    with the statement of the document lines and the counter (the four-way
//    OR), the first row read;
//  - the list of a leaf of the article structure: the statement of
//    CargarDatos, every row read and laid out in the list's fixed columns
//    (Farticulos::FilaArticulo);
//  - Cambiar on every product (200,000 of them), one UPDATE for each product
//    as the window writes them, all in one transaction (OneTransaction, as
//    the window saves it now) and, for comparison, each UPDATE committed on
//    its own (EachOwnCommit, as the change was saved before it was whole),
//    with the size the write-ahead log reaches in each;
//  - the catalogue: opening it, a search by name with the window's count
//    (MoveLast, MoveFirst) and walk, and the walk of the whole catalogue.
//
// The shop is made once into /tmp/velmarinda_products_bench.mdb
// (VELMARINDA_PRODUCTS_DB overrides it) and the catalogue into
// /tmp/velmarinda_catalogue_bench/articulo.dbf; both are reused while there.
//
// Run: build/bin/velbench --benchmark_filter='Lookup|Leaf|Catalogue|ChangeAll'
// (the window itself: products_window_bench.cpp).
#include "core/dbase_store.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/sql_values.h"
#include "masterdata/farticulos.h"
#include "masterdata/price_changes.h"
#include "runtime/vb.h"

#include <benchmark/benchmark.h>
#include <shapefil.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr int kProducts = 500000;
constexpr int kLeaves = 100; // 5,000 products each
constexpr int kChangeAll = 200000;
constexpr int kArticles = 300000;

QString shopPath() {
    const char* env = std::getenv("VELMARINDA_PRODUCTS_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_products_bench.mdb");
}
const QString kCatalogueFolder = QStringLiteral("/tmp/velmarinda_catalogue_bench");

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

QString reference(int i) { return QStringLiteral("R%1").arg(i, 7, 10, QLatin1Char('0')); }
QString barcode(int which, int i) { return QStringLiteral("8%1%2").arg(which).arg(1000000000LL + i * 7LL); }
// Leaf of product i: codes 01..10 at each of two levels, 01 at the others.
QString leafCode(int leaf, int level) {
    switch (level) {
    case 0: return QStringLiteral("%1").arg(1 + leaf / 10, 2, 10, QLatin1Char('0'));
    case 1: return QStringLiteral("%1").arg(1 + leaf % 10, 2, 10, QLatin1Char('0'));
    default: return QStringLiteral("01");
    }
}

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

// The shop: every product at one of the leaves, each with three bar codes.
void generateShop(const QString& path) {
    const auto started = std::chrono::steady_clock::now();
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    sqlite3* h = db->handle();
    check(sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr), h, "begin");
    QString sql = QStringLiteral("INSERT INTO productos VALUES (?");
    for (int i = 1; i < 31; ++i) sql += QStringLiteral(", ?");
    sql += QLatin1Char(')');
    sqlite3_stmt* st = nullptr;
    check(sqlite3_prepare_v2(h, sql.toUtf8().constData(), -1, &st, nullptr), h, "prepare");
    const auto& columns = vel::schema::FindTable(QStringLiteral("productos"))->columns;
    Lcg rnd(42);
    for (int i = 0; i < kProducts; ++i) {
        const int leaf = i % kLeaves;
        const QString desc = QStringLiteral("%1 %2 %3 MM").arg(QString::fromUtf8(kWords1[rnd.below(16)]),
                                                               QString::fromUtf8(kWords2[rnd.below(12)]))
                                 .arg(rnd.below(100));
        const double price = 0.5 + rnd.below(20000) / 100.0;
        for (size_t c = 0; c < columns.size(); ++c) {
            const int b = int(c) + 1;
            if (columns[c].kind == vel::schema::Kind::Number) {
                sqlite3_bind_double(st, b, c == 11 ? price : c == 10 ? price / 2 : c == 30 ? 1.0 : 0.0);
                continue;
            }
            QString v;
            if (c < 4) v = leafCode(leaf, int(c));
            else if (c == 4) v = reference(i);
            else if (c == 5) v = desc;
            else if (c == 7) v = QStringLiteral("MARCA%1").arg(i % 50);
            else if (c == 8) v = QStringLiteral("M%1").arg(i % 300);
            else if (c >= 25 && c <= 27) v = barcode(int(c) - 24, i);
            bindText(st, b, v);
        }
        check(sqlite3_step(st), h, "insert");
        sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    check(sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr), h, "commit");
    check(sqlite3_exec(h, "ANALYZE", nullptr, nullptr, nullptr), h, "analyze");
    sqlite3_wal_checkpoint_v2(h, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    std::fprintf(stderr, "generated %s in %.1f s\n", qPrintable(path),
                 std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
}

vel::Database& shop() {
    static std::unique_ptr<vel::Database> db = [] {
        if (!QFileInfo::exists(shopPath())) generateShop(shopPath());
        auto d = vel::Database::OpenDatabase(shopPath());
        vel::schema::CreateMissingIndexes(*d);
        return d;
    }();
    return *db;
}

// ---- Lookup by reference or bar code ---------------------------------------

QString lookup(const QString& x) {
    return QStringLiteral("SELECT descripcion_productos, pvp_neto_productos, codigo_iva_productos FROM productos "
                          "WHERE referencia_productos = '") +
           x + QStringLiteral("' OR cod_barras1_productos = '") + x + QStringLiteral("' OR cod_barras2_productos = '") +
           x + QStringLiteral("' OR cod_barras3_productos = '") + x + QStringLiteral("'");
}

// What is scanned: 0 a reference, 1-3 one of the bar codes, 4 nothing known.
QString scanned(int kind, int i) {
    if (kind == 0) return reference(i);
    if (kind <= 3) return barcode(kind, i);
    return QStringLiteral("X%1").arg(i);
}

void BM_Lookup_RecordStore(benchmark::State& state) {
    vel::Database& db = shop();
    const int kind = int(state.range(0));
    Lcg rnd(7);
    for (auto _ : state) {
        auto rs = db.OpenRecordset(lookup(scanned(kind, rnd.below(kProducts))));
        if (kind < 4 && rs->Eof()) state.SkipWithError("not found");
        if (!rs->Eof()) {
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("descripcion_productos")));
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("pvp_neto_productos")));
        }
    }
    state.SetLabel(kind == 0 ? "reference" : kind == 4 ? "unknown" : "barcode " + std::to_string(kind));
}
BENCHMARK(BM_Lookup_RecordStore)->DenseRange(0, 4)->Unit(benchmark::kMicrosecond)->MinTime(1);

void BM_Lookup_Raw(benchmark::State& state) {
    sqlite3* h = shop().handle();
    const int kind = int(state.range(0));
    Lcg rnd(7);
    for (auto _ : state) {
        const QByteArray sql = lookup(scanned(kind, rnd.below(kProducts))).toUtf8();
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, sql.constData(), int(sql.size()), &st, nullptr), h, "prepare");
        const int rc = sqlite3_step(st);
        if (kind < 4 && rc != SQLITE_ROW) state.SkipWithError("not found");
        if (rc == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_text(st, 0));
            benchmark::DoNotOptimize(sqlite3_column_double(st, 1));
        }
        sqlite3_finalize(st);
    }
    state.SetLabel(kind == 0 ? "reference" : kind == 4 ? "unknown" : "barcode " + std::to_string(kind));
}
BENCHMARK(BM_Lookup_Raw)->DenseRange(0, 4)->Unit(benchmark::kMicrosecond)->MinTime(1);

// ---- The list of a leaf (CargarDatos without the list box) ---------------------

QString leafQuery(int leaf) {
    return QStringLiteral("SELECT referencia_productos, descripcion_productos, marca_productos, modelo_productos, "
                          "pvp_neto_productos FROM productos WHERE division_productos = '") +
           leafCode(leaf, 0) + QStringLiteral("' AND gfamilia_productos = '") + leafCode(leaf, 1) +
           QStringLiteral("' AND familia_productos = '01' AND articulo_productos = '01' ORDER BY referencia_productos");
}

void BM_Leaf5000_RecordStore(benchmark::State& state) {
    vel::Database& db = shop();
    int leaf = 0;
    long rows = 0;
    for (auto _ : state) {
        auto rs = db.OpenRecordset(leafQuery(leaf++ % kLeaves));
        while (!rs->Eof()) {
            benchmark::DoNotOptimize(vel::Farticulos::FilaArticulo(rs->Fields(QStringLiteral("referencia_productos")).str(),
                                             rs->Fields(QStringLiteral("descripcion_productos")).str(),
                                             rs->Fields(QStringLiteral("marca_productos")).str(),
                                             rs->Fields(QStringLiteral("modelo_productos")).str(),
                                             rs->Fields(QStringLiteral("pvp_neto_productos")).num()));
            ++rows;
            rs->MoveNext();
        }
    }
    state.counters["rows"] = double(rows) / double(state.iterations());
}
BENCHMARK(BM_Leaf5000_RecordStore)->Unit(benchmark::kMillisecond)->MinTime(2);

void BM_Leaf5000_Raw(benchmark::State& state) {
    sqlite3* h = shop().handle();
    int leaf = 0;
    long rows = 0;
    for (auto _ : state) {
        const QByteArray sql = leafQuery(leaf++ % kLeaves).toUtf8();
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, sql.constData(), int(sql.size()), &st, nullptr), h, "prepare");
        while (sqlite3_step(st) == SQLITE_ROW) {
            for (int c = 0; c < 4; ++c) benchmark::DoNotOptimize(sqlite3_column_text(st, c));
            benchmark::DoNotOptimize(sqlite3_column_double(st, 4));
            ++rows;
        }
        sqlite3_finalize(st);
    }
    state.counters["rows"] = double(rows) / double(state.iterations());
}
BENCHMARK(BM_Leaf5000_Raw)->Unit(benchmark::kMillisecond)->MinTime(2);

// ---- Cambiar on every product -----------------------------------------------
// A copy of the shop with 200,000 products (beside the shop's file); each run
// rewrites every price with one UPDATE for each product. The log is measured
// at its largest, sampled as the run goes: in one transaction it holds every
// page the change wrote until the commit; with a commit for each UPDATE the
// engine folds it back into the file every 1,000 pages.

QString changeAllCopy() {
    QString path = shopPath();
    path.replace(QRegularExpression(QStringLiteral("\\.mdb$")), QString());
    path += QStringLiteral("_change_all.mdb");
    if (!QFileInfo::exists(path)) {
        shop();
        sqlite3* h = shop().handle();
        QFile::remove(path);
        check(sqlite3_exec(h, ("VACUUM INTO '" + path.toUtf8() + "'").constData(), nullptr, nullptr, nullptr), h,
              "vacuum");
        auto db = vel::Database::OpenDatabase(path);
        check(sqlite3_exec(db->handle(),
                           QStringLiteral("DELETE FROM productos WHERE referencia_productos >= '%1'")
                               .arg(reference(kChangeAll))
                               .toUtf8()
                               .constData(),
                           nullptr, nullptr, nullptr),
              db->handle(), "trim");
        check(sqlite3_exec(db->handle(), "VACUUM", nullptr, nullptr, nullptr), db->handle(), "vacuum");
    }
    return path;
}

qint64 walSize(const QString& path) { return QFileInfo(path + QStringLiteral("-wal")).size(); }

const QString kAllQuery = QStringLiteral(
    "SELECT referencia_productos, pvp_neto_productos FROM productos WHERE referencia_productos <> '' AND "
    "pvp_neto_productos > 0 ORDER BY referencia_productos");

// The window's change: CambiarPrecios, one transaction.
void BM_ChangeAll200k_OneTransaction(benchmark::State& state) {
    const QString path = changeAllCopy();
    auto db = vel::Database::OpenDatabase(path);
    qint64 largest = 0;
    long updates = 0;
    for (auto _ : state) {
        auto rs = db->OpenRecordset(kAllQuery);
        const double factor = vb::Val(QStringLiteral("1")) / 100 + 1;
        long n = 0;
        vel::CambiarPrecios(*db, *rs, [&](double p) {
            if (++n % 20000 == 0) largest = std::max(largest, walSize(path));
            return p * factor;
        });
        updates += n;
        largest = std::max(largest, walSize(path));
    }
    state.counters["products"] = double(updates) / double(state.iterations());
    state.counters["wal_MB"] = double(largest) / (1024.0 * 1024.0);
}
BENCHMARK(BM_ChangeAll200k_OneTransaction)->Unit(benchmark::kMillisecond)->Iterations(2);

// The same walk and statements with no transaction around them: each UPDATE
// commits on its own.
void BM_ChangeAll200k_EachOwnCommit(benchmark::State& state) {
    const QString path = changeAllCopy();
    auto db = vel::Database::OpenDatabase(path);
    qint64 largest = 0;
    long updates = 0;
    for (auto _ : state) {
        auto rs = db->OpenRecordset(kAllQuery);
        const double factor = vb::Val(QStringLiteral("1")) / 100 + 1;
        while (!rs->Eof()) {
            const double nuevo = rs->Fields(QStringLiteral("pvp_neto_productos")).num() * factor;
            db->Execute(QStringLiteral("UPDATE productos SET pvp_neto_productos = ") + vb::CStr(nuevo) +
                        QStringLiteral(" WHERE referencia_productos = ") +
                        vel::sql::Comillas(rs->Fields(QStringLiteral("referencia_productos")).str()));
            if (++updates % 20000 == 0) largest = std::max(largest, walSize(path));
            rs->MoveNext();
        }
        largest = std::max(largest, walSize(path));
    }
    state.counters["products"] = double(updates) / double(state.iterations());
    state.counters["wal_MB"] = double(largest) / (1024.0 * 1024.0);
}
BENCHMARK(BM_ChangeAll200k_EachOwnCommit)->Unit(benchmark::kMillisecond)->Iterations(2);

void BM_ChangeAll200k_Raw(benchmark::State& state) {
    const QString path = changeAllCopy();
    sqlite3* h = nullptr;
    sqlite3_open_v2(path.toUtf8().constData(), &h, SQLITE_OPEN_READWRITE, nullptr);
    check(sqlite3_exec(h, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr), h, "wal");
    // The raw side needs the store's collation to read the table: the same
    // statements through sqlite3 alone, the references as bytes.
    sqlite3_create_collation(h, "ESPANOL", SQLITE_UTF8, nullptr,
                             [](void*, int na, const void* a, int nb, const void* b) {
                                 const int c = std::memcmp(a, b, size_t(std::min(na, nb)));
                                 return c != 0 ? c : na - nb;
                             });
    qint64 largest = 0;
    long updates = 0;
    for (auto _ : state) {
        // Read the list first, as the store does before its first write.
        std::vector<std::pair<std::string, double>> rows;
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h, kAllQuery.toUtf8().constData(), -1, &st, nullptr), h, "prepare");
        while (sqlite3_step(st) == SQLITE_ROW)
            rows.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)), sqlite3_column_double(st, 1));
        sqlite3_finalize(st);
        for (const auto& [ref, price] : rows) {
            const QByteArray sql = (QStringLiteral("UPDATE productos SET pvp_neto_productos = ") +
                                    vb::CStr(price * 1.01) + QStringLiteral(" WHERE referencia_productos = '") +
                                    QString::fromStdString(ref) + QStringLiteral("'"))
                                       .toUtf8();
            check(sqlite3_exec(h, sql.constData(), nullptr, nullptr, nullptr), h, "update");
            if (++updates % 20000 == 0) largest = std::max(largest, walSize(path));
        }
    }
    sqlite3_close(h);
    state.counters["products"] = double(updates) / double(state.iterations());
    state.counters["wal_MB"] = double(largest) / (1024.0 * 1024.0);
}
BENCHMARK(BM_ChangeAll200k_Raw)->Unit(benchmark::kMillisecond)->Iterations(2);

// ---- The chain's catalogue ------------------------------------------------------

const char* const kColours[] = {"", "ROJO", "NEGRO", "BLANCO", "GRIS"};

// CODIGO N(8), NOMBRE C(40), REFPROVE C(15), PVENTA N(10,2), COLOR C(10),
// EAN N(13), in code page 850, with one article in 50 deleted.
void generateCatalogue() {
    const QString path = kCatalogueFolder + QStringLiteral("/articulo.dbf");
    if (QFileInfo::exists(path)) return;
    QDir().mkpath(kCatalogueFolder);
    const auto started = std::chrono::steady_clock::now();
    DBFHandle h = DBFCreateEx(path.toLocal8Bit().constData(), "LDID/2");
    DBFAddNativeFieldType(h, "CODIGO", 'N', 8, 0);
    DBFAddNativeFieldType(h, "NOMBRE", 'C', 40, 0);
    DBFAddNativeFieldType(h, "REFPROVE", 'C', 15, 0);
    DBFAddNativeFieldType(h, "PVENTA", 'N', 10, 2);
    DBFAddNativeFieldType(h, "COLOR", 'C', 10, 0);
    DBFAddNativeFieldType(h, "EAN", 'N', 13, 0);
    Lcg rnd(3);
    char cell[64];
    auto put = [&](int r, int f, const char* fmt, auto... v) {
        std::snprintf(cell, sizeof cell, fmt, v...);
        DBFWriteAttributeDirectly(h, r, f, cell);
    };
    // The words in code page 850 (CAÑA, LATÓN, PLÁSTICO written as a DOS program writes them).
    const char* const w1[] = {"TORNILLO", "TUERCA", "ARANDELA", "BROCA", "TACO", "CLAVO", "BISAGRA", "CERRADURA",
                              "MARTILLO", "ALICATE", "LLAVE", "DESTORNILLADOR", "CA\xA5" "A", "MANGUERA", "PINTURA",
                              "BROCHA"};
    const char* const w2[] = {"ACERO", "LAT\xE0N", "INOX", "MADERA", "PL\xB5STICO", "GALVANIZADO", "NEGRO", "BLANCO",
                              "ROJO", "CROMADO", "ALUMINIO", "HIERRO"};
    for (int r = 0; r < kArticles; ++r) {
        put(r, 0, "%8d", r + 1);
        put(r, 1, "%s %s %d MM", w1[rnd.below(16)], w2[rnd.below(12)], rnd.below(100));
        put(r, 2, "P%07d", r * 3);
        put(r, 3, "%10.2f", 0.5 + rnd.below(20000) / 100.0);
        put(r, 4, "%s", kColours[r % 5][0] ? kColours[r % 5] : " ");
        put(r, 5, "%13lld", 8412345000000LL + r);
        if (r % 50 == 49) DBFMarkRecordDeleted(h, r, 1);
    }
    DBFClose(h);
    std::fprintf(stderr, "generated %s in %.1f s\n", qPrintable(path),
                 std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
}

void BM_CatalogueOpen(benchmark::State& state) {
    generateCatalogue();
    for (auto _ : state) {
        auto db = vel::OpenDbaseDatabase(kCatalogueFolder, QStringLiteral("articulo.dbf"));
        benchmark::DoNotOptimize(db.get());
    }
}
BENCHMARK(BM_CatalogueOpen)->Unit(benchmark::kMillisecond)->MinTime(2);

vel::Database& catalogue() {
    static std::unique_ptr<vel::Database> db = [] {
        generateCatalogue();
        return vel::OpenDbaseDatabase(kCatalogueFolder, QStringLiteral("articulo.dbf"));
    }();
    return *db;
}

const char* const kNameSearches[] = {"DESTORNILLADOR INOX 4", "CAÑA", "LATÓN 1", "ZZZ"};

// The search of the supplier tab: the query, the count (MoveLast, MoveFirst),
// and the walk reading codigo for each article found.
void BM_CatalogueSearchByName(benchmark::State& state) {
    vel::Database& db = catalogue();
    const QString text = QString::fromUtf8(kNameSearches[state.range(0)]);
    long found = 0;
    for (auto _ : state) {
        auto rs = db.OpenRecordset(QStringLiteral("SELECT codigo, nombre, refprove, pventa, ean FROM articulo "
                                                  "WHERE nombre LIKE '*") +
                                   vb::UCase(text) + QStringLiteral("*' ORDER BY nombre"));
        if (rs->AbsolutePosition() != -1) {
            rs->MoveLast();
            found = rs->AbsolutePosition() + 1;
            rs->MoveFirst();
        } else {
            found = 0;
        }
        while (!rs->Eof()) {
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("codigo")).str());
            rs->MoveNext();
        }
    }
    state.counters["found"] = double(found);
    state.SetLabel(kNameSearches[state.range(0)]);
}
BENCHMARK(BM_CatalogueSearchByName)->DenseRange(0, 3)->Unit(benchmark::kMillisecond)->MinTime(2);

// The same search straight on shapelib: every live record's name read and
// matched, as bytes in the file's code page, against the upper-case text.
void BM_CatalogueSearchByName_Shapelib(benchmark::State& state) {
    generateCatalogue();
    const QByteArray path = (kCatalogueFolder + QStringLiteral("/articulo.dbf")).toLocal8Bit();
    const char* const bytes850[] = {"DESTORNILLADOR INOX 4", "CA\xA5" "A", "LAT\xE0N 1", "ZZZ"};
    const char* needle = bytes850[state.range(0)];
    long found = 0;
    DBFHandle h = DBFOpen(path.constData(), "rb");
    const int n = DBFGetRecordCount(h);
    for (auto _ : state) {
        std::vector<int> codes;
        for (int r = 0; r < n; ++r) {
            if (DBFIsRecordDeleted(h, r)) continue;
            if (std::strstr(DBFReadStringAttribute(h, r, 1), needle)) codes.push_back(DBFReadIntegerAttribute(h, r, 0));
        }
        found = long(codes.size());
    }
    DBFClose(h);
    state.counters["found"] = double(found);
    state.SetLabel(kNameSearches[state.range(0)]);
}
BENCHMARK(BM_CatalogueSearchByName_Shapelib)->DenseRange(0, 3)->Unit(benchmark::kMillisecond)->MinTime(2);

// The whole catalogue (the search with its three fields empty), counted and
// walked, codigo read from each article; without the combo box.
void BM_CatalogueWholeList(benchmark::State& state) {
    vel::Database& db = catalogue();
    long rows = 0;
    for (auto _ : state) {
        auto rs = db.OpenRecordset(QStringLiteral("SELECT codigo, nombre, refprove, pventa, ean FROM articulo "));
        rs->MoveLast();
        rows = rs->AbsolutePosition() + 1;
        rs->MoveFirst();
        while (!rs->Eof()) {
            benchmark::DoNotOptimize(rs->Fields(QStringLiteral("codigo")).str());
            rs->MoveNext();
        }
    }
    state.counters["rows"] = double(rows);
}
BENCHMARK(BM_CatalogueWholeList)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_CatalogueWholeList_Shapelib(benchmark::State& state) {
    generateCatalogue();
    const QByteArray path = (kCatalogueFolder + QStringLiteral("/articulo.dbf")).toLocal8Bit();
    long rows = 0;
    DBFHandle h = DBFOpen(path.constData(), "rb");
    const int n = DBFGetRecordCount(h);
    for (auto _ : state) {
        rows = 0;
        for (int r = 0; r < n; ++r) {
            if (DBFIsRecordDeleted(h, r)) continue;
            for (int f : {0, 1, 2, 3, 5}) benchmark::DoNotOptimize(DBFReadStringAttribute(h, r, f));
            ++rows;
        }
    }
    DBFClose(h);
    state.counters["rows"] = double(rows);
}
BENCHMARK(BM_CatalogueWholeList_Shapelib)->Unit(benchmark::kMillisecond)->MinTime(3);

} // namespace

// The shop databases of the benchmarks, made once and reused while they are there.
#include "shop.h"
#include "core/record_store.h"
#include "core/schema.h"

#include <sqlite3.h>

#include <QDir>
#include <QFileInfo>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace velbench {

QString ShopPath() {
    const char* env = std::getenv("VELMARINDA_BENCH_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_bench.mdb");
}

namespace {

const char* const kWords1[] = {"TORNILLO", "TUERCA", "ARANDELA", "BROCA", "TACO", "CLAVO", "BISAGRA", "CERRADURA",
                               "MARTILLO", "ALICATE", "LLAVE", "DESTORNILLADOR", "CAÑA", "MANGUERA", "PINTURA", "BROCHA"};
const char* const kWords2[] = {"ACERO", "LATÓN", "INOX", "MADERA", "PLÁSTICO", "GALVANIZADO", "NEGRO", "BLANCO",
                               "ROJO", "CROMADO", "ALUMINIO", "HIERRO"};
const char* const kNames[] = {"JOSÉ", "MARÍA", "ANTONIO", "CARMEN", "MANUEL", "LUCÍA", "FRANCISCO", "NURIA",
                              "ÍÑIGO", "BEGOÑA", "PEDRO", "ANA"};
const char* const kSurnames[] = {"GARCÍA", "LÓPEZ", "MUÑOZ", "PEÑA", "IBÁÑEZ", "SÁNCHEZ", "CASTAÑO", "NÚÑEZ",
                                 "RUIZ", "ORDÓÑEZ", "GIL", "YÁÑEZ"};


void bindText(sqlite3_stmt* st, int i, const QString& s) {
    const QByteArray b = s.toUtf8();
    sqlite3_bind_text(st, i, b.constData(), static_cast<int>(b.size()), SQLITE_TRANSIENT);
}

sqlite3_stmt* prepareInsert(sqlite3* h, const char* table, int columns) {
    QString sql = QStringLiteral("INSERT INTO %1 VALUES (").arg(QLatin1String(table));
    for (int i = 0; i < columns; ++i) sql += (i ? QStringLiteral(", ?") : QStringLiteral("?"));
    sql += QLatin1Char(')');
    sqlite3_stmt* st = nullptr;
    Check(sqlite3_prepare_v2(h, sql.toUtf8().constData(), -1, &st, nullptr), h, "prepare insert");
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
    Check(sqlite3_step(st), h, t.name);
    sqlite3_reset(st);
}

void generate(const QString& path, const ShopSize& size) {
    const auto started = std::chrono::steady_clock::now();
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    sqlite3* h = db->handle();
    Check(sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr), h, "begin");
    Lcg rnd(42);

    const auto& productos = *vel::schema::FindTable(QStringLiteral("productos"));
    sqlite3_stmt* ins = prepareInsert(h, "productos", 31);
    for (int i = 0; i < size.products; ++i) {
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
                case 4: return Reference(i);
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
    for (int i = 0; i < size.customers; ++i) {
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
                case 1: return Nif(i);
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
    for (int n = 0; n < size.notes; ++n) {
        const double store = 1 + n % 3, year = 2020 + n / 20000, number = 1 + n / 3 % 6667;
        const int customer = rnd.below(size.customers);
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
                case 11: return Nif(customer);
                case 12: return QStringLiteral("CLIENTE %1").arg(customer);
                case 18: return QStringLiteral("CON");
                case 40: return QStringLiteral("0");
                default: return QString();
                }
            });
        for (int l = 0; l < size.linesPerNote; ++l) {
            const int product = rnd.below(size.products);
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
                    case 5: return Reference(product);
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
    Check(sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr), h, "commit");
    Check(sqlite3_exec(h, "ANALYZE", nullptr, nullptr, nullptr), h, "analyze");
    sqlite3_wal_checkpoint_v2(h, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    const double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::fprintf(stderr, "generated %s in %.1f s\n", qPrintable(path), secs);
}

} // namespace

QString Reference(int i) { return QStringLiteral("R%1").arg(i, 7, 10, QLatin1Char('0')); }
QString Nif(int i) { return QStringLiteral("%1%2").arg(10000000 + i).arg(QChar('A' + i % 23)); }

void Check(int rc, sqlite3* db, const char* what) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
        std::fprintf(stderr, "%s: %s\n", what, sqlite3_errmsg(db));
        std::abort();
    }
}

vel::Database& Shop() {
    static std::unique_ptr<vel::Database> db = [] {
        const QString path = ShopPath();
        if (!QFileInfo::exists(path)) generate(path, kShop);
        return vel::Database::OpenDatabase(path);
    }();
    return *db;
}

QString LargeCataloguePath() {
    return QFileInfo(ShopPath()).absoluteDir().filePath(QStringLiteral("velmarinda_bench_500k.mdb"));
}

vel::Database& LargeCatalogue() {
    static std::unique_ptr<vel::Database> db = [] {
        const QString path = LargeCataloguePath();
        if (!QFileInfo::exists(path)) generate(path, kLargeCatalogue);
        return vel::Database::OpenDatabase(path);
    }();
    return *db;
}

} // namespace velbench


// The customer window on a shop of 50,000 customers: how long Consultar takes
// to a window ready for input (four list fills, the first buscanif and
// muestradatos with its five lookups), how long a buscanif from each list
// takes, and where the time goes:
//   - the engine alone: the four list statements stepped through SQLite's C
//     interface, reading the one column each list shows;
//   - the record store: the same statements through OpenRecordset, walking to
//     EOF and reading the column by name, as the window does;
//   - the lists: PartnerLists::Llenar, which adds the 200,000 entries to the
//     four combo boxes (its time less the record store's is the widgets');
//   - muestradatos: one record and its five lookups.
//
// The database is made once into /tmp/velmarinda_partners_bench.mdb
// (VELMARINDA_PARTNERS_BENCH_DB overrides it) and kept.
//
// Run: build/bin/velbench_windows [--benchmark_filter=...]
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "masterdata/fclientes.h"
#include "core/sql_values.h"
#include "masterdata/partner_search.h"
#include "masterdata/partner_table.h"
#include "runtime/msgbox.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QApplication>
#include <QFileInfo>
#include <QHash>
#include <QLineEdit>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kCustomers = 50000;

QString benchPath() {
    const char* env = std::getenv("VELMARINDA_PARTNERS_BENCH_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_partners_bench.mdb");
}

const char* const kNames[] = {"JOSÉ", "MARÍA", "ANTONIO", "CARMEN", "MANUEL", "LUCÍA", "FRANCISCO", "NURIA",
                              "ÍÑIGO", "BEGOÑA", "PEDRO", "ANA", "XOSÉ", "UXÍA", "BREIXO", "SABELA"};
const char* const kSurnames[] = {"GARCÍA", "LÓPEZ", "MUÑOZ", "PEÑA", "IBÁÑEZ", "SÁNCHEZ", "CASTAÑO", "NÚÑEZ",
                                 "RUIZ", "ORDÓÑEZ", "GIL", "YÁÑEZ", "FERNÁNDEZ", "OTERO", "CASTRO", "VÁZQUEZ"};
const char* const kTrades[] = {"FERRETERÍA", "TALLERES", "CONSTRUCCIONES", "CARPINTERÍA", "SUMINISTROS",
                               "ELECTRICIDAD", "FONTANERÍA", "REFORMAS"};

struct Lcg {
    uint64_t s;
    explicit Lcg(uint64_t seed) : s(seed) {}
    int below(int n) {
        s = s * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<int>((s >> 33) % static_cast<uint64_t>(n));
    }
};

// Customers as the window writes them: a NIF each, codes, fiscal names that
// repeat (people of the same name), a commercial name for most, an account at
// one of 20 banks and 200 branches, a payment term, a VAT type and a store.
void generate(const QString& path) {
    std::fprintf(stderr, "Making %s with %d customers...\n", qPrintable(path), kCustomers);
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    sqlite3_exec(db->handle(), "BEGIN", nullptr, nullptr, nullptr);
    for (int b = 1; b <= 20; ++b) {
        db->Execute(QStringLiteral("INSERT INTO bancos VALUES ('%1', 'BANCO %2')").arg(b, 4, 10, QChar('0')).arg(b));
        for (int s = 1; s <= 10; ++s)
            db->Execute(QStringLiteral("INSERT INTO bancos_sucursales VALUES ('%1', '%2', 'OFICINA %3-%4', 'RUA %4')")
                            .arg(s, 4, 10, QChar('0'))
                            .arg(b, 4, 10, QChar('0'))
                            .arg(b)
                            .arg(s));
    }
    db->Execute(QStringLiteral("INSERT INTO tienda VALUES (2, 'NORTE', '')"));
    db->Execute(QStringLiteral("INSERT INTO tienda VALUES (3, 'SUR', '')"));
    Lcg rnd(7);
    for (int i = 0; i < kCustomers; ++i) {
        const QString name = QString::fromUtf8(kNames[rnd.below(16)]);
        const QString surnames = QString::fromUtf8(kSurnames[rnd.below(16)]) + " " +
                                 QString::fromUtf8(kSurnames[rnd.below(16)]);
        const bool company = rnd.below(3) == 0;
        const QString fiscal = company ? QString::fromUtf8(kTrades[rnd.below(8)]) + " " + surnames + " SL"
                                       : surnames + " " + name;
        QHash<QString, QString> boxes{
            {"Textcodigo", QStringLiteral("C%1").arg(i, 6, 10, QChar('0'))},
            {"Textnif", QStringLiteral("%1%2").arg(10000000 + i * 7).arg(QChar('A' + i % 23))},
            {"Textnombre", name},
            {"Textapellidos", surnames},
            {"Textnombrecomercial", rnd.below(10) == 0 ? QString() : QStringLiteral("%1 %2").arg(fiscal).arg(i % 97)},
            {"Textdomicilio", QStringLiteral("RÚA NOVA %1").arg(i % 300)},
            {"Textpoblacion", "PORTELAS"},
            {"Textprovincia", "LUGO"},
            {"Textnacionalidad", "ESPAÑOLA"},
            {"Textcodigopostal", QString::number(27000 + i % 900)},
            {"Texttelefono1", QString::number(982000000 + i)},
            {"Textbanco", QStringLiteral("%1").arg(1 + i % 20, 4, 10, QChar('0'))},
            {"Textsucursal", QStringLiteral("%1").arg(1 + i % 10, 4, 10, QChar('0'))},
            {"Textdigitocontrol", QString::number(i % 100)},
            {"Textnumerocuenta", QString::number(1000000 + i)},
            {"Textformapago", i % 2 ? "CON" : "30"},
            {"Combotarifa", QString::number(1 + i % 5)},
            {"Textcodigoiva", QString::number(1 + i % 3)},
            {"Checkfacturable", "1"},
            {"Checkmailing", QString::number(i % 2)},
            {"Textlimitefacturacion", "3000"},
            {"Textcodigotienda", QString::number(1 + i % 3)},
            {"Textnombrefiscal", fiscal},
            {"Textalta", "01/02/2024"},
            {"TextIban", "ES12"},
        };
        db->Execute(vel::PartnerInsert(vel::Clientes(), [&](const QString& c) { return boxes.value(c); }));
    }
    sqlite3_exec(db->handle(), "COMMIT", nullptr, nullptr, nullptr);
}

// Message boxes answer OK and are counted: a benchmark that meets one says so.
class QuietBoxes : public vb::MessageBoxService {
public:
    int shown = 0;
    int show(const QString&, const QString&, int) override {
        ++shown;
        return vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

struct Shop {
    std::unique_ptr<vel::Database> db;
    QuietBoxes boxes;
    Shop() {
        const QString path = benchPath();
        if (!QFileInfo::exists(path)) generate(path);
        db = vel::Database::OpenDatabase(path);
        vel::BaseDatos = db.get();
        vb::SetMessageBoxService(&boxes);
    }
};

Shop& shop() {
    static Shop s;
    return s;
}

const char* const kListStatements[] = {
    "SELECT * FROM clientes ORDER BY nif_cliente",
    "SELECT * FROM clientes ORDER BY codigo_cliente",
    "SELECT * FROM clientes ORDER BY nombrefiscal_cliente",
    "SELECT * FROM clientes ORDER BY nombrecomercial_cliente",
};
const char* const kListColumns[] = {"nif_cliente", "codigo_cliente", "nombrefiscal_cliente", "nombrecomercial_cliente"};

// The window, with its piece within reach.
class Ventana : public vel::Fclientes {
public:
    using vel::Fclientes::Listas;
    using vel::Fclientes::Vista;
};

// Consultar to a window ready for input: the four lists filled, the first
// customer found by buscanif and shown by muestradatos with its five lookups,
// the focus in the NIF list and every event the clicks left behind handled.
void BM_Consultar(benchmark::State& state) {
    shop();
    Ventana w;
    w.Load();
    w.show();
    QApplication::processEvents();
    for (auto _ : state) {
        w.Commandconsultar_Click();
        QApplication::processEvents();
        state.PauseTiming();
        w.Commandcancelar_Click();
        QApplication::processEvents();
        state.ResumeTiming();
    }
    if (shop().boxes.shown) state.SkipWithError("a message box was shown");
}
BENCHMARK(BM_Consultar)->Unit(benchmark::kMillisecond)->Iterations(5);

// The engine alone: the four statements stepped through the C interface, the
// shown column read as text.
void BM_ListFill_Engine(benchmark::State& state) {
    sqlite3* h = shop().db->handle();
    for (auto _ : state) {
        long rows = 0;
        for (int l = 0; l < 4; ++l) {
            sqlite3_stmt* st = nullptr;
            sqlite3_prepare_v2(h, kListStatements[l], -1, &st, nullptr);
            const int column = [&] {
                for (int c = 0; c < sqlite3_column_count(st); ++c)
                    if (qstrcmp(sqlite3_column_name(st, c), kListColumns[l]) == 0) return c;
                return 0;
            }();
            while (sqlite3_step(st) == SQLITE_ROW) {
                benchmark::DoNotOptimize(sqlite3_column_text(st, column));
                ++rows;
            }
            sqlite3_finalize(st);
        }
        benchmark::DoNotOptimize(rows);
    }
}
BENCHMARK(BM_ListFill_Engine)->Unit(benchmark::kMillisecond);

// The record store: the same walk through OpenRecordset, EOF, MoveNext and the
// field by name, with the empty-name rule.
void BM_ListFill_RecordStore(benchmark::State& state) {
    for (auto _ : state) {
        QStringList entries;
        for (int l = 0; l < 4; ++l) {
            auto rs = vel::BaseDatos->OpenRecordset(QLatin1String(kListStatements[l]));
            while (!rs->Eof()) {
                entries << vel::TextoCampo(*rs, QLatin1String(kListColumns[l]));
                rs->MoveNext();
            }
        }
        benchmark::DoNotOptimize(entries);
    }
}
BENCHMARK(BM_ListFill_RecordStore)->Unit(benchmark::kMillisecond);

// The four lists of the window filled, as Consultar fills them.
void BM_ListFill_Window(benchmark::State& state) {
    shop();
    Ventana w;
    w.show();
    for (auto _ : state) {
        w.Listas.Llenar();
        benchmark::DoNotOptimize(w.Listas.Combonif->ListCount());
    }
    state.counters["entries"] = w.Listas.Combonif->ListCount() + w.Listas.Combocodigo->ListCount() +
                                w.Listas.Combonombrefiscal->ListCount() + w.Listas.Combonombrecomercial->ListCount();
}
BENCHMARK(BM_ListFill_Window)->Unit(benchmark::kMillisecond);

// muestradatos: the record by its NIF and the five lookups.
void BM_muestradatos(benchmark::State& state) {
    shop();
    Ventana w;
    w.show();
    auto* nif = w.findChild<QLineEdit*>(QStringLiteral("Textnif"));
    int i = 0;
    for (auto _ : state) {
        nif->setText(QStringLiteral("%1%2").arg(10000000 + (i % kCustomers) * 7).arg(QChar('A' + i % kCustomers % 23)));
        w.Vista.muestradatos();
        i += 7919;
    }
}
BENCHMARK(BM_muestradatos)->Unit(benchmark::kMicrosecond);

// A buscanif from one of the four lists: an entry chosen somewhere in the list
// finds its record, sets the other three lists on it and shows it.
void BM_buscanif(benchmark::State& state) {
    static const char* const words[] = {"NIF", "CODIGO", "FISCAL", "COMERCIAL"};
    const QString word = QLatin1String(words[state.range(0)]);
    shop();
    Ventana w;
    w.show();
    w.Listas.Llenar();
    vb::ComboBox* lists[] = {w.Listas.Combonif, w.Listas.Combocodigo, w.Listas.Combonombrefiscal,
                             w.Listas.Combonombrecomercial};
    vb::ComboBox* list = lists[state.range(0)];
    w.Listas.Lista_GotFocus(word);
    int i = 0;
    for (auto _ : state) {
        // Entries all over the list, the last ones included.
        // Choosing the entry raises the list's Click, which runs buscanif.
        list->SetListIndex((i * 7919 + list->ListCount() - 1) % list->ListCount());
        ++i;
    }
    state.SetLabel(words[state.range(0)]);
    if (shop().boxes.shown) state.SkipWithError("a message box was shown");
}
BENCHMARK(BM_buscanif)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

} // namespace


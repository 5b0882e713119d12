// The customer's account card on a shop of 50,000 customers, one of whom has a
// card of 5,000 entries this year:
//   - choosing the year (Comboejercicioapunte_Click): the year before, the
//     head row and the 5,000 entries into the grid with the running balance;
//     beside it the engine alone, stepping the same SELECT through SQLite's C
//     interface and reading the six columns the grid shows;
//   - saving a schedule of 12 instalments in mode "N" (Commandaceptar_Click:
//     the term, the walk of the due dates, 12 INSERTs and the head's UPDATE in
//     one transaction, and the redisplay of the card), on a customer whose card
//     is empty this year; beside it the engine alone, the same 13 statements
//     in one transaction;
//   - buscanif from the NIF list over the 50,000 customers (the search, the
//     other three lists set on the record and muestradatos).
//
// The database is made once into /tmp/velmarinda_cards_bench.mdb
// (VELMARINDA_CARDS_BENCH_DB overrides it) and kept.
//
// Run: build/bin/velbench_windows --benchmark_filter=Card
#include "cards/formfichasclientes.h"
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "runtime/clock.h"
#include "runtime/flexgrid.h"
#include "runtime/msgbox.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QApplication>
#include <QCheckBox>
#include <QFileInfo>
#include <QLineEdit>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kCustomers = 50000;
constexpr int kEntries = 5000;

QString benchPath() {
    const char* env = std::getenv("VELMARINDA_CARDS_BENCH_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_cards_bench.mdb");
}

QString nif(int i) { return QStringLiteral("%1%2").arg(10000000 + i * 7).arg(QChar('A' + i % 23)); }

// 50,000 customers; the first has 5,000 entries in 2026 and a card in 2025.
void generate(const QString& path) {
    std::fprintf(stderr, "Making %s with %d customers and a card of %d entries...\n", qPrintable(path), kCustomers,
                 kEntries);
    vel::schema::CreateEmptyDatabase(path);
    auto db = vel::Database::OpenDatabase(path);
    sqlite3_exec(db->handle(), "BEGIN", nullptr, nullptr, nullptr);
    for (int i = 0; i < kCustomers; ++i)
        db->Execute(QStringLiteral("INSERT INTO clientes VALUES ('C%1', '%2', 'NOMBRE', 'APELLIDOS %3', "
                                   "'COMERCIAL %3', 'RUA NOVA %4', 'PORTELAS', 'LUGO', 'ESPAÑOLA', 27001, 0, 0, 0, "
                                   "0, '', '', 0, '', 0, '', '', 0, '', '', 0, '', '', '', 00, 0000000000, 0, 0, "
                                   "'CON', 1, 0, 0, 1, 1, '0', 0, 1, '', 'FISCAL %3 SL', '01/02/2024', '', '')")
                        .arg(i, 6, 10, QChar('0'))
                        .arg(nif(i))
                        .arg(i)
                        .arg(i % 300));
    db->Execute(QStringLiteral("INSERT INTO formapago VALUES ('M12', 'DOCE MESES', 12, 30, 60, 90, 120, 150, 180, "
                               "210, 240, 270, 300, 330, 360)"));
    db->Execute("INSERT INTO cabecera_fichas_clientes VALUES (2025, '" + nif(0) + "', 'C000000', 10, 1000, 800, 0, "
                "'31/12/2025')");
    db->Execute("INSERT INTO cabecera_fichas_clientes VALUES (2026, '" + nif(0) + "', 'C000000', " +
                QString::number(kEntries) + ", 50000, 20000, 200, '20/11/2026')");
    for (int n = 1; n <= kEntries; ++n)
        db->Execute(QStringLiteral("INSERT INTO detalle_fichas_clientes VALUES (2026, '%1', 'C000000', %2, '1', "
                                   "'FC', '', 'CON', 'FACTURA %2', '%3/%4/2026', %5, %6, '%7')")
                        .arg(nif(0))
                        .arg(n)
                        .arg(1 + n % 28, 2, 10, QChar('0'))
                        .arg(1 + n % 12, 2, 10, QChar('0'))
                        .arg(n % 2 ? 10 : 0)
                        .arg(n % 2 ? 0 : 4)
                        .arg(n % 3 ? "" : "C"));
    sqlite3_exec(db->handle(), "COMMIT", nullptr, nullptr, nullptr);
}

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
        vb::clock::pin(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    }
};

Shop& shop() {
    static Shop s;
    return s;
}

class Ventana : public vel::FormFichasClientes {
public:
    using vel::FormFichasClientes::Listas;
};

template <class T> T* control(QWidget* w, const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }

// The window open in Consultar on the customer of the 5,000 entries.
void EnConsulta(Ventana& w, int cliente) {
    w.Load();
    w.show();
    w.Listas.Lista_GotFocus(QStringLiteral("NIF"));
    w.Listas.Combonif->SetListIndex(w.Listas.Combonif->findText(nif(cliente)));
    w.Commandconsultar_Click();
    QApplication::processEvents();
}

void BM_Card_YearChoice(benchmark::State& state) {
    shop();
    Ventana w;
    EnConsulta(w, 0);
    auto* grid = control<vb::FlexGrid>(&w, "Gridapuntes");
    for (auto _ : state) {
        w.Comboejercicioapunte_Click();
        benchmark::DoNotOptimize(grid->Rows());
    }
    state.counters["rows"] = grid->Rows() - 1;
    if (shop().boxes.shown) state.SkipWithError("a message box was shown");
}

// The engine alone: the entries of the year stepped and the six shown columns read.
void BM_Card_YearChoice_Engine(benchmark::State& state) {
    sqlite3* h = shop().db->handle();
    const QByteArray sql = ("SELECT numero_detalle_fichas_clientes, tipo_linea_detalle_fichas_clientes, "
                            "fecha_detalle_fichas_clientes, descripcion_detalle_fichas_clientes, "
                            "debe_detalle_fichas_clientes, haber_detalle_fichas_clientes FROM detalle_fichas_clientes "
                            "WHERE nif_detalle_fichas_clientes = '" + nif(0) + "' AND ejercicio_detalle_fichas_clientes = 2026")
                               .toUtf8();
    for (auto _ : state) {
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(h, sql.constData(), -1, &st, nullptr);
        long rows = 0;
        double saldo = 0;
        while (sqlite3_step(st) == SQLITE_ROW) {
            benchmark::DoNotOptimize(sqlite3_column_int(st, 0));
            benchmark::DoNotOptimize(sqlite3_column_text(st, 1));
            benchmark::DoNotOptimize(sqlite3_column_text(st, 2));
            benchmark::DoNotOptimize(sqlite3_column_text(st, 3));
            saldo += sqlite3_column_double(st, 4) - sqlite3_column_double(st, 5);
            ++rows;
        }
        sqlite3_finalize(st);
        benchmark::DoNotOptimize(saldo);
        state.counters["rows"] = double(rows);
    }
}

// Twelve instalments from a term of twelve dates, saved and shown again; the
// entries are taken away again out of the timing.
void BM_Card_Schedule12(benchmark::State& state) {
    shop();
    Ventana w;
    w.Load();
    w.show();
    w.Listas.Lista_GotFocus(QStringLiteral("NIF"));
    w.Listas.Combonif->SetListIndex(w.Listas.Combonif->findText(nif(1)));
    w.Commandnuevo_Click();
    QApplication::processEvents();
    auto* formas = control<vb::ComboBox>(&w, "Comboformapagoapunte");
    for (auto _ : state) {
        state.PauseTiming();
        formas->SetListIndex(formas->findText(QStringLiteral("M12")));
        control<QCheckBox>(&w, "Checkgenerarapunte")->setChecked(true);
        control<QLineEdit>(&w, "Textdescripcionapunte")->setText(QStringLiteral("FACTURA 12"));
        control<QLineEdit>(&w, "Textdebeapunte")->setText(QStringLiteral("1200"));
        control<QLineEdit>(&w, "Texthaberapunte")->setText(QStringLiteral("0"));
        state.ResumeTiming();
        w.Commandaceptar_Click();
        state.PauseTiming();
        vel::BaseDatos->Execute("DELETE FROM detalle_fichas_clientes WHERE nif_detalle_fichas_clientes = '" + nif(1) + "'");
        vel::BaseDatos->Execute("DELETE FROM cabecera_fichas_clientes WHERE nif_cabecera_fichas_clientes = '" + nif(1) + "'");
        w.Commandnuevo_Click();
        state.ResumeTiming();
    }
    if (shop().boxes.shown) state.SkipWithError("a message box was shown");
}

// The engine alone: the twelve INSERTs and the head's INSERT in one transaction.
void BM_Card_Schedule12_Engine(benchmark::State& state) {
    sqlite3* h = shop().db->handle();
    for (auto _ : state) {
        sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr);
        for (int i = 0; i < 12; ++i) {
            const QByteArray sql = QStringLiteral("INSERT INTO detalle_fichas_clientes VALUES (2026, '%1', 'C000002', "
                                                  "%2, '1', 'FC', '', 'M12', 'FACTURA 12', '15/%3/2026', %4, 100.00, '')")
                                       .arg(nif(2))
                                       .arg(i + 1)
                                       .arg(1 + i % 12, 2, 10, QChar('0'))
                                       .arg(i == 0 ? "1200.00" : "0.00")
                                       .toUtf8();
            sqlite3_exec(h, sql.constData(), nullptr, nullptr, nullptr);
        }
        const QByteArray head = ("INSERT INTO cabecera_fichas_clientes VALUES (2026, '" + nif(2) +
                                 "', 'C000002', 12, 1200.00, 0.00, 0.00, '15/12/2026')")
                                    .toUtf8();
        sqlite3_exec(h, head.constData(), nullptr, nullptr, nullptr);
        sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr);
        state.PauseTiming();
        const QByteArray del = ("DELETE FROM detalle_fichas_clientes WHERE nif_detalle_fichas_clientes = '" + nif(2) + "'").toUtf8();
        const QByteArray delh = ("DELETE FROM cabecera_fichas_clientes WHERE nif_cabecera_fichas_clientes = '" + nif(2) + "'").toUtf8();
        sqlite3_exec(h, del.constData(), nullptr, nullptr, nullptr);
        sqlite3_exec(h, delh.constData(), nullptr, nullptr, nullptr);
        state.ResumeTiming();
    }
}

// buscanif from the NIF list of the card, entries all over the list.
void BM_Card_buscanif(benchmark::State& state) {
    shop();
    Ventana w;
    w.Load();
    w.show();
    w.Listas.Lista_GotFocus(QStringLiteral("NIF"));
    vb::ComboBox* list = w.Listas.Combonif;
    int i = 0;
    for (auto _ : state) {
        list->SetListIndex((i * 7919 + list->ListCount() - 1) % list->ListCount());
        ++i;
    }
    state.counters["customers"] = list->ListCount();
    if (shop().boxes.shown) state.SkipWithError("a message box was shown");
}

// The engine alone: the record of one NIF, every column read.
void BM_Card_buscanif_Engine(benchmark::State& state) {
    sqlite3* h = shop().db->handle();
    int i = 0;
    for (auto _ : state) {
        const QByteArray sql = ("SELECT * FROM clientes WHERE nif_cliente = '" + nif((i * 7919) % kCustomers) + "'").toUtf8();
        sqlite3_stmt* st = nullptr;
        sqlite3_prepare_v2(h, sql.constData(), -1, &st, nullptr);
        while (sqlite3_step(st) == SQLITE_ROW)
            for (int c = 0; c < sqlite3_column_count(st); ++c) benchmark::DoNotOptimize(sqlite3_column_text(st, c));
        sqlite3_finalize(st);
        ++i;
    }
}

BENCHMARK(BM_Card_YearChoice)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_Card_YearChoice_Engine)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Card_Schedule12)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Card_Schedule12_Engine)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Card_buscanif)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Card_buscanif_Engine)->Unit(benchmark::kMicrosecond);

} // namespace

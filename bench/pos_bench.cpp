// The counter at full speed, through the real window FTpv and real key events:
//
//  - a scan: a code typed into Textreferencia and Enter, the product looked up
//    by reference or any of its three bar codes among 500,000 products, the
//    entry row filled (half the scans are by bar code);
//  - one more line on a ticket of 200 lines: Enter in TextUnidades;
//  - CommandCobrar of a ticket of 100 lines: counter, header, 100 lines, the
//    ticket printed (to the recording printer: letterhead, 200 article lines,
//    total), and the window cleared for the next sale;
//  - 10,000 tickets rung up one after the other (three scans and Page Down
//    each, every ticket printed), then every ticket is checked stored and
//    printed, the numbers consecutive and
//    the database's integrity_check ok (reported as counters, and the run fails
//    when they are not).
//
// The shop of 500,000 products is made once into /tmp/velmarinda_pos_bench.mdb
// (VELMARINDA_POS_BENCH_DB overrides the path) and reused; the sales run on a
// copy of it, so the shop stays as it was made.
//
// Run: build/bin/velbench --benchmark_filter=Tpv
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "pos/ftpv.h"
#include "runtime/app.h"
#include "runtime/beep.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"
#include "runtime/print_transcript.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kProductos = 500000;

// The offscreen platform's notes about window hints are noise here.
void quiet(QtMsgType type, const QMessageLogContext&, const QString& msg) {
    if (msg.contains(QLatin1String("propagateSizeHints"))) return;
    if (type != QtDebugMsg) std::fprintf(stderr, "%s\n", qPrintable(msg));
}

void ensureApp() {
    static int argc = 1;
    static char name[] = "velbench";
    static char* argv[] = {name, nullptr};
    if (!QApplication::instance()) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        qInstallMessageHandler(quiet);
        new QApplication(argc, argv);
    }
}

QString shopPath() {
    const char* env = std::getenv("VELMARINDA_POS_BENCH_DB");
    return env ? QString::fromLocal8Bit(env) : QStringLiteral("/tmp/velmarinda_pos_bench.mdb");
}

QString referenciaDe(int i) { return QStringLiteral("R%1").arg(i, 7, 10, QLatin1Char('0')); }
QString barras(int i, int n) { return QStringLiteral("84%1%2").arg(n).arg(i, 10, 10, QLatin1Char('0')); }

void check(int rc, sqlite3* db, const char* what) {
    if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
        std::fprintf(stderr, "%s: %s\n", what, sqlite3_errmsg(db));
        std::abort();
    }
}

// 500,000 products with three bar codes each, in one transaction.
void makeShop(const QString& path) {
    if (QFileInfo::exists(path)) return;
    std::fprintf(stderr, "Making %s with %d products...\n", qPrintable(path), kProductos);
    const QString tmp = path + ".part";
    QFile::remove(tmp);
    vel::schema::CreateEmptyDatabase(tmp);
    {
        auto db = vel::Database::OpenDatabase(tmp);
        sqlite3* h = db->handle();
        check(sqlite3_exec(h, "BEGIN", nullptr, nullptr, nullptr), h, "begin");
        sqlite3_stmt* st = nullptr;
        check(sqlite3_prepare_v2(h,
                                 "INSERT INTO productos VALUES ('01','01','01','01',?1,?2,'','MARCA','MODELO','',1,?3,0,"
                                 "0,0,0,0,0,0,'','',0,0,'','',?4,?5,?6,'','',?7)",
                                 -1, &st, nullptr),
              h, "prepare");
        const char* palabras[] = {"TORNILLO", "TUERCA", "ARANDELA", "BROCA", "TACO", "CLAVO", "BISAGRA", "LLAVE"};
        for (int i = 1; i <= kProductos; ++i) {
            const QByteArray ref = referenciaDe(i).toUtf8();
            const QByteArray des = QStringLiteral("%1 %2 MM").arg(QLatin1String(palabras[i % 8])).arg(i).toUtf8();
            const QByteArray b1 = barras(i, 1).toUtf8(), b2 = barras(i, 2).toUtf8(), b3 = barras(i, 3).toUtf8();
            sqlite3_bind_text(st, 1, ref.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(st, 2, des.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_double(st, 3, 0.5 + (i % 997) / 10.0);
            sqlite3_bind_text(st, 4, b1.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(st, 5, b2.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_text(st, 6, b3.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int(st, 7, 1 + i % 3);
            check(sqlite3_step(st), h, "insert");
            sqlite3_reset(st);
        }
        sqlite3_finalize(st);
        check(sqlite3_exec(h, "COMMIT", nullptr, nullptr, nullptr), h, "commit");
    }
    QFile::rename(tmp, path);
}

// Any message box during a benchmark is a failure of the run.
class NoBoxes : public vb::MessageBoxService {
public:
    int show(const QString& title, const QString& text, int) override {
        std::fprintf(stderr, "unexpected message box: %s: %s\n", qPrintable(title), qPrintable(text));
        std::abort();
    }
    void about(const QString&, const QString&) override {}
};

// A copy of the shop opened as the session's database, config.ini beside it,
// and the counter window open and active.
class Counter {
public:
    Counter() {
        ensureApp();
        makeShop(shopPath());
        QFile::copy(shopPath(), dir.filePath("datos.mdb"));
        QFile cfg(dir.filePath("config.ini"));
        cfg.open(QIODevice::WriteOnly);
        cfg.write("FERROBANDA\n");
        cfg.close();
        vb::SetAppPath(dir.path());
        vb::SetMessageBoxService(&boxes);
        vb::SetBeepListener([] {});
        vb::SetPrintEnvironment(&printer);
        vel::BaseDatos = vel::Database::OpenDatabase(dir.filePath("datos.mdb")).release();
        window = std::make_unique<vel::FTpv>();
        window->Load();
        window->show();
        window->activateWindow();
        QApplication::setActiveWindow(window.get());
        settle();
        referencia = window->findChild<QLineEdit*>("Textreferencia");
        unidades = window->findChild<QLineEdit*>("TextUnidades");
        list = window->findChild<QListWidget*>("ListTicket");
        referencia->setFocus();
        settle();
    }
    ~Counter() {
        window.reset();
        delete vel::BaseDatos;
        vel::BaseDatos = nullptr;
        vb::SetMessageBoxService(nullptr);
        vb::SetBeepListener(nullptr);
        vb::SetPrintEnvironment(nullptr);
    }
    static void settle() {
        for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    }
    // The scanner: the code and Enter; the focus then is on the units.
    void scan(const QString& code) {
        referencia->setText(code);
        QTest::keyClick(referencia, Qt::Key_Return);
        if (QApplication::focusWidget() != unidades) {
            std::fprintf(stderr, "scan of %s found nothing\n", qPrintable(code));
            std::abort();
        }
    }
    // Units and Enter: the line goes in and the focus back to the reference.
    void units(const QString& n) {
        unidades->setText(n);
        QTest::keyClick(unidades, Qt::Key_Return);
    }
    void line(int i) {
        scan(codigo(i));
        units("2");
    }
    static QString codigo(int i) { return i % 2 ? referenciaDe(i) : barras(i, 1 + i % 3); }

    QTemporaryDir dir;
    NoBoxes boxes;
    vb::PrintRecorder printer;
    std::unique_ptr<vel::FTpv> window;
    QLineEdit* referencia = nullptr;
    QLineEdit* unidades = nullptr;
    QListWidget* list = nullptr;
};

int next(uint64_t& s) {
    s = s * 6364136223846793005ULL + 1442695040888963407ULL;
    return 1 + static_cast<int>((s >> 33) % kProductos);
}

void BM_TpvEscaneo(benchmark::State& state) {
    Counter c;
    uint64_t seed = 42;
    for (auto _ : state) {
        c.scan(Counter::codigo(next(seed)));
        state.PauseTiming();
        c.referencia->setFocus();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TpvEscaneo)->Unit(benchmark::kMillisecond);

void BM_TpvLineaEnTicketDe200(benchmark::State& state) {
    Counter c;
    uint64_t seed = 7;
    for (int i = 0; i < 200; ++i) c.line(next(seed));
    for (auto _ : state) {
        state.PauseTiming();
        c.scan(Counter::codigo(next(seed)));
        state.ResumeTiming();
        c.units("3");
        state.PauseTiming();
        delete c.list->takeItem(c.list->count() - 1);
        state.ResumeTiming();
    }
    state.counters["lineas"] = c.list->count();
}
BENCHMARK(BM_TpvLineaEnTicketDe200)->Unit(benchmark::kMillisecond);

void BM_TpvCobrar100(benchmark::State& state) {
    Counter c;
    uint64_t seed = 99;
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 0; i < 100; ++i) c.line(next(seed));
        state.ResumeTiming();
        c.window->CommandCobrar_Click();
        state.PauseTiming();
        // Stored and printed: the ticket has its 100 articles on paper.
        if (c.list->count() != 0 || c.printer.jobs.size() != 1 || !c.printer.last().ended ||
            c.printer.last().lines().size() != 11 + 2 + 4 + 200 + 5)
            std::abort();
        c.printer.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TpvCobrar100)->Unit(benchmark::kMillisecond);

QString one(vel::Database& db, const QString& sql, const QString& column) {
    auto rs = db.OpenRecordset(sql);
    return rs->Eof() ? QString() : rs->Fields(column).str();
}

void BM_Tpv10000Tickets(benchmark::State& state) {
    Counter c;
    uint64_t seed = 2026;
    constexpr int kTickets = 10000;
    int printed = 0;
    for (auto _ : state) {
        for (int t = 0; t < kTickets; ++t) {
            for (int l = 0; l < 3; ++l) c.line(next(seed));
            QTest::keyClick(c.referencia, Qt::Key_PageDown);
            for (const vb::PrintJobRecord& j : c.printer.jobs) printed += j.ended ? 1 : 0;
            c.printer.clear();
        }
    }
    vel::Database& db = *vel::BaseDatos;
    const int headers = one(db, "SELECT count(*) AS n FROM cabecera_diaria_ticket", "n").toInt();
    const int lines = one(db, "SELECT count(*) AS n FROM detalle_diaria_ticket", "n").toInt();
    const int distinct = one(db, "SELECT count(DISTINCT numero_cabecera_diaria_ticket) AS n FROM cabecera_diaria_ticket", "n").toInt();
    const int lowest = one(db, "SELECT min(numero_cabecera_diaria_ticket) AS n FROM cabecera_diaria_ticket", "n").toInt();
    const int highest = one(db, "SELECT max(numero_cabecera_diaria_ticket) AS n FROM cabecera_diaria_ticket", "n").toInt();
    const QString counter = one(db, "SELECT contador_series FROM series WHERE serie_series = 'TI'", "contador_series");
    sqlite3_stmt* st = nullptr;
    QString integrity;
    if (sqlite3_prepare_v2(db.handle(), "PRAGMA integrity_check", -1, &st, nullptr) == SQLITE_OK &&
        sqlite3_step(st) == SQLITE_ROW)
        integrity = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)));
    sqlite3_finalize(st);
    const bool ok = printed == kTickets && headers == kTickets && lines == 3 * kTickets && distinct == kTickets && lowest == 1 &&
                    highest == kTickets && counter == QString::number(kTickets) && integrity == "ok";
    state.counters["impresos"] = printed;
    state.counters["cabeceras"] = headers;
    state.counters["lineas"] = lines;
    state.counters["primero"] = lowest;
    state.counters["ultimo"] = highest;
    state.counters["integridad_ok"] = integrity == "ok";
    std::fprintf(stderr, "10,000 tickets: %d printed, %d headers, %d lines, numbers %d..%d (%d distinct), "
                         "counter %s, integrity_check %s: %s\n",
                 printed, headers, lines, lowest, highest, distinct, qPrintable(counter), qPrintable(integrity),
                 ok ? "ok" : "WRONG");
    if (!ok) state.SkipWithError("tickets not all stored and printed with consecutive numbers");
}
BENCHMARK(BM_Tpv10000Tickets)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

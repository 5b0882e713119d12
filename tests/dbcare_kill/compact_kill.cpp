// Kills at random moments of a compacting: after each SIGKILL, datos.mdb must
// be a whole database (the old one or the compacted one) that passes the
// engine's integrity check, with every row.
//
//   vel_compact_kill [--kills N] [--megabytes M] [--seed S]
//
// The folder holds a database of the program with a filler table of about M
// megabytes (and a third of it deleted, so there is dead space to take out).
// Each round starts this same program as a child (--child FOLDER), which opens
// BaseDatos and presses the start button of the compacting window; the parent
// kills it after a random time within the length of a whole compacting,
// measured first. The next round compacts whatever the last one left.
#include "core/record_store.h"
#include "core/schema.h"
#include "core/session.h"
#include "dbcare/database_care.h"
#include "dbcare/fcompactar.h"
#include "runtime/environment.h"
#include "runtime/errors.h"
#include "runtime/msgbox.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class PrintedBoxes : public vb::MessageBoxService {
public:
    int show(const QString& title, const QString& text, int style) override {
        std::fprintf(stderr, "msgbox %s %s %d\n", qPrintable(title), qPrintable(text), style);
        return vb::vbOK;
    }
    void about(const QString&, const QString&) override {}
};

int child(const QString& folder) {
    PrintedBoxes boxes;
    vb::InstalledEnvironment env({.messageBoxes = &boxes, .programFolder = folder});
    vel::BaseDatos = vel::Database::OpenDatabase(folder + "/datos.mdb").release();
    auto* w = new vel::Fcompactar;
    w->Load();
    w->botonuciniciar_Click();
    return 0;
}

struct Totals {
    long long rows = 0, sum = 0;
    bool operator==(const Totals&) const = default;
};

// The integrity check and the rows of the filler and of the stores.
bool check(const QString& path, Totals* totals, QString* why) {
    const QString verdict = vel::ComprobarIntegridad(path);
    if (verdict != "ok") {
        *why = "integrity_check: " + verdict;
        return false;
    }
    auto db = vel::Database::OpenDatabase(path);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db->handle(), "SELECT count(*), total(id) FROM relleno", -1, &st, nullptr);
    if (sqlite3_step(st) != SQLITE_ROW) {
        *why = "the filler can't be read";
        sqlite3_finalize(st);
        return false;
    }
    totals->rows = sqlite3_column_int64(st, 0);
    totals->sum = static_cast<long long>(sqlite3_column_double(st, 1));
    sqlite3_finalize(st);
    return true;
}

pid_t spawn(const char* self, const QString& folder) {
    const pid_t pid = fork();
    if (pid == 0) {
        const QByteArray f = folder.toLocal8Bit();
        execl(self, self, "--child", f.constData(), static_cast<char*>(nullptr));
        _exit(127);
    }
    return pid;
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    int kills = 10;
    int megabytes = 8;
    unsigned seed = 20261125;
    for (int i = 1; i < argc; ++i) {
        const QString a = argv[i];
        if (a == "--child" && i + 1 < argc) return child(QString::fromLocal8Bit(argv[i + 1]));
        if (a == "--kills" && i + 1 < argc) kills = std::atoi(argv[++i]);
        else if (a == "--megabytes" && i + 1 < argc) megabytes = std::atoi(argv[++i]);
        else if (a == "--seed" && i + 1 < argc) seed = static_cast<unsigned>(std::atol(argv[++i]));
    }
    QTemporaryDir dir;
    const QString folder = dir.path();
    const QString datos = folder + "/datos.mdb";
    vel::schema::CreateEmptyDatabase(datos);
    {
        auto db = vel::Database::OpenDatabase(datos);
        sqlite3* h = db->handle();
        sqlite3_exec(h, "CREATE TABLE relleno (id INTEGER PRIMARY KEY, texto TEXT)", nullptr, nullptr, nullptr);
        // Rows of about 1 KB: M megabytes, then every third row deleted.
        const long rows = static_cast<long>(megabytes) * 1000;
        const QByteArray fill = QStringLiteral("WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c WHERE x < %1) "
                                               "INSERT INTO relleno SELECT x, hex(randomblob(500)) FROM c")
                                    .arg(rows)
                                    .toUtf8();
        sqlite3_exec(h, fill.constData(), nullptr, nullptr, nullptr);
        sqlite3_exec(h, "DELETE FROM relleno WHERE id % 3 = 0", nullptr, nullptr, nullptr);
        sqlite3_wal_checkpoint_v2(h, nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    }
    Totals expected;
    QString why;
    if (!check(datos, &expected, &why)) {
        std::fprintf(stderr, "the first database is not sound: %s\n", qPrintable(why));
        return 1;
    }
    std::printf("database: %lld rows, %.1f MB\n", expected.rows, QFileInfo(datos).size() / 1e6);

    // One whole compacting, for the length of the window to kill within.
    QElapsedTimer t;
    t.start();
    int status = 0;
    waitpid(spawn(argv[0], folder), &status, 0);
    const qint64 whole = std::max<qint64>(t.elapsed(), 1);
    std::printf("one compacting: %lld ms\n", static_cast<long long>(whole));

    std::mt19937 random(seed);
    std::uniform_int_distribution<qint64> when(0, whole + whole / 5);
    int finished = 0;
    for (int k = 1; k <= kills; ++k) {
        const qint64 after = when(random);
        const pid_t pid = spawn(argv[0], folder);
        QElapsedTimer wait;
        wait.start();
        bool done = false;
        while (wait.elapsed() < after) {
            if (waitpid(pid, &status, WNOHANG) == pid) {
                done = true;
                break;
            }
            usleep(1000);
        }
        if (!done) {
            kill(pid, SIGKILL);
            waitpid(pid, &status, 0);
        } else {
            ++finished;
        }
        Totals now;
        if (!check(datos, &now, &why)) {
            std::fprintf(stderr, "kill %d after %lld ms: %s\n", k, static_cast<long long>(after), qPrintable(why));
            return 1;
        }
        if (!(now == expected)) {
            std::fprintf(stderr, "kill %d after %lld ms: %lld rows (sum %lld), %lld expected (sum %lld)\n", k,
                         static_cast<long long>(after), now.rows, now.sum, expected.rows, expected.sum);
            return 1;
        }
    }
    std::printf("%d kills: datos.mdb whole and sound after each (%d runs ended before their kill)\n", kills, finished);
    return 0;
}

// velscenario [--check | --update] FILE.scn
//   prints the transcript; --check compares it with FILE.out, --update writes it.
#include "app/program.h"
#include "scenario/driver.h"
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>
#include <cstdlib>

static QString readFile(const QString& path, bool* ok) {
    QFile f(path);
    *ok = f.open(QIODevice::ReadOnly);
    return *ok ? QString::fromUtf8(f.readAll()) : QString();
}

// The offscreen platform's notes about window hints (and about raising or grabbing
// for the open list of a combo) are no news for a transcript.
static void quietHandler(QtMsgType type, const QMessageLogContext&, const QString& msg) {
    if (msg.contains(QLatin1String("propagateSizeHints")) || msg.startsWith(QLatin1String("QStandardPaths:")) ||
        msg.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type != QtDebugMsg) fprintf(stderr, "%s\n", qPrintable(msg));
}

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    qInstallMessageHandler(quietHandler);
    QApplication app(argc, argv);
    vel::SetUpApplication(app);
    QString mode, path;
    for (int i = 1; i < argc; ++i) {
        const QString a = QString::fromLocal8Bit(argv[i]);
        if (a == QLatin1String("--check") || a == QLatin1String("--update"))
            mode = a;
        else
            path = a;
    }
    QTextStream out(stdout), err(stderr);
    if (path.isEmpty()) {
        err << "uso: velscenario [--check|--update] FICHERO.scn\n";
        return 3;
    }
    bool ok = false;
    const QString text = readFile(path, &ok);
    if (!ok) {
        err << "no se puede leer " << path << "\n";
        return 3;
    }
    QString transcript;
    // VELSCENARIO_SQL_LOG: a file for the statements the program ran (the
    // test suite's query-plan check reads them).
    const auto result = vel::scenario::Run(text, &transcript, QFileInfo(path).fileName(),
                                           qEnvironmentVariable("VELSCENARIO_SQL_LOG"));
    const QString outPath = path.left(path.size() - QFileInfo(path).suffix().size()) + QStringLiteral("out");
    if (mode == QLatin1String("--update")) {
        QFile f(outPath);
        if (f.open(QIODevice::WriteOnly)) f.write(transcript.toUtf8());
        out << transcript;
        return result;
    }
    out << transcript;
    out.flush();
    if (result != vel::scenario::Passed) return result;
    if (mode == QLatin1String("--check")) {
        const QString expected = readFile(outPath, &ok);
        if (!ok) {
            err << "falta la transcripción esperada " << outPath << "\n";
            return vel::scenario::Mismatch;
        }
        if (expected != transcript) {
            const QStringList a = expected.split('\n'), b = transcript.split('\n');
            for (int i = 0; i < qMax(a.size(), b.size()); ++i) {
                const QString x = i < a.size() ? a[i] : QStringLiteral("<fin>");
                const QString y = i < b.size() ? b[i] : QStringLiteral("<fin>");
                if (x != y) {
                    err << "la transcripción difiere en la línea " << (i + 1) << ":\n  esperada: " << x
                        << "\n  obtenida: " << y << "\n";
                    break;
                }
            }
            return vel::scenario::Mismatch;
        }
    }
    return vel::scenario::Passed;
}

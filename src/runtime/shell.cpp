#include "runtime/shell.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include "runtime/forms.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <signal.h>

namespace vb {

namespace {
QStringList searchPath() {
    QStringList dirs{QDir(AppPath()).filePath(QStringLiteral("bin"))};
    dirs += QString::fromLocal8Bit(qgetenv("PATH")).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    return dirs;
}

// A task is alive while its process exists and has not finished (a finished
// child no one waited for stays as a zombie: that is no running task).
bool alive(long pid) {
    if (pid <= 0 || ::kill(pid_t(pid), 0) != 0) return false;
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly)) return true;
    const QByteArray s = stat.readAll();
    const int close = s.lastIndexOf(')');
    return !(close > 0 && close + 2 < s.size() && s.at(close + 2) == 'Z');
}
} // namespace

QString FindProgram(const QStringList& candidates) {
    const QStringList dirs = searchPath();
    for (const QString& c : candidates) {
        const QString found = QStandardPaths::findExecutable(c, dirs);
        if (!found.isEmpty()) return found;
    }
    return {};
}

long Shell(const QString& commandLine, int) {
    QStringList words = QProcess::splitCommand(commandLine);
    const QString path = words.isEmpty() ? QString() : FindProgram({words.takeFirst()});
    qint64 pid = 0;
    if (path.isEmpty() || !QProcess::startDetached(path, words, AppPath(), &pid))
        Raise(53, QStringLiteral("No se ha encontrado el archivo"));
    return long(pid);
}

bool TaskRunning(long taskId) { return alive(taskId); }

void ShellAndWait(const QString& commandLine, int windowStyle) {
    const long task = Shell(commandLine, windowStyle);
    while (alive(task)) {
        QThread::msleep(100);
        DoEvents();
    }
}

void AppActivate(long taskId) {
    if (!alive(taskId)) Raise(5, QStringLiteral("Llamada a procedimiento o argumento no válido"));
    // Raising another program's window is the window manager's business: ask
    // wmctrl when the desktop has it; a task that is alive counts as activated.
    const QString wmctrl = FindProgram({QStringLiteral("wmctrl")});
    if (wmctrl.isEmpty()) return;
    QProcess list;
    list.start(wmctrl, {QStringLiteral("-lp")});
    if (!list.waitForFinished(2000)) return;
    for (const QByteArray& line : list.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> f = line.simplified().split(' ');
        if (f.size() > 2 && f.at(2).toLong() == taskId) {
            QProcess::execute(wmctrl, {QStringLiteral("-ia"), QString::fromLatin1(f.at(0))});
            return;
        }
    }
}

} // namespace vb

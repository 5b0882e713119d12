#include "runtime/paths.h"
#include "runtime/app.h"

#include <QDir>

namespace vb {

QString NativePath(const QString& path) {
    QString p = path;
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (p.size() >= 2 && p.at(1) == QLatin1Char(':') && p.at(0).isLetter() && p.at(0).unicode() < 128) {
        const QString drive = p.left(1).toLower();
        QString rest = p.mid(2);
        while (rest.startsWith(QLatin1Char('/'))) rest.remove(0, 1);
        const QString root = QDir(AppPath()).filePath(drive);
        return rest.isEmpty() ? root : root + QLatin1Char('/') + rest;
    }
    return p;
}

} // namespace vb

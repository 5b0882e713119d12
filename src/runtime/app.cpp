#include "runtime/app.h"
#include <QCoreApplication>

namespace vb {
namespace {
QString& folder() {
    static QString f;
    return f;
}
} // namespace

QString AppPath() {
    if (folder().isEmpty()) return QCoreApplication::applicationDirPath();
    return folder();
}

void SetAppPath(const QString& f) { folder() = f; }

} // namespace vb

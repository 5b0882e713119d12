#include "runtime/app.h"
#include "runtime/environment.h"
#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace vb {

QString AppPath() {
    const QString& folder = CurrentEnvironment().programFolder;
    if (folder.isEmpty()) return QCoreApplication::applicationDirPath();
    return folder;
}

void SetAppPath(const QString& f) { CurrentEnvironment().programFolder = f; }

} // namespace vb

namespace vb {
void InstallSpanish(QApplication& app) {
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    auto* qt = new QTranslator(&app);
    if (qt->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        app.installTranslator(qt);
}
} // namespace vb

namespace vb {
QColor DisabledTextColor() { return QColor(0x59, 0x59, 0x59); }

void InstallLook(QApplication& app) {
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) app.setStyle(fusion);
    QPalette palette = app.style()->standardPalette();
    palette.setColor(QPalette::Disabled, QPalette::Text, DisabledTextColor());
    app.setPalette(palette);
}
} // namespace vb

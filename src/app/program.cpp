#include "app/program.h"
#include "core/dbase_store.h"
#include "core/schema.h"
#include "runtime/app.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>

// The icon is compiled into the program; a static library registers its
// resources when asked to.
static void registerIcon() { Q_INIT_RESOURCE(velmarinda); }

namespace vel {

bool HasDisplay() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty() && !platform.startsWith("xcb") && !platform.startsWith("wayland")) return true;
    return !qgetenv("DISPLAY").isEmpty() || !qgetenv("WAYLAND_DISPLAY").isEmpty();
}

QString NoDisplayMessage() {
    return QStringLiteral("Velmarinda necesita un escritorio gráfico y no hay ninguno (ni DISPLAY ni "
                          "WAYLAND_DISPLAY): ábralo desde una sesión de escritorio, o pruébelo sin pantalla "
                          "con «xvfb-run velmarinda».");
}

QIcon ProgramIcon() {
    registerIcon();
    return QIcon(QStringLiteral(":/velmarinda/velmarinda.svg"));
}

void SetUpApplication(QApplication& app) {
    vb::InstallSpanish(app);
    vb::InstallLook(app);
    QApplication::setWindowIcon(ProgramIcon());
    // The desktop entry, for the desktops that match windows to it by name.
    QGuiApplication::setDesktopFileName(QStringLiteral("velmarinda"));
}

namespace {
bool hasDatabase(const QString& dir) { return QFileInfo(QDir(dir).filePath(QStringLiteral("datos.mdb"))).isFile(); }
bool isBuildTree(const QString& dir) { return QFileInfo(QDir(dir).filePath(QStringLiteral("../CMakeCache.txt"))).isFile(); }
} // namespace

const QByteArray kConfiguracionInicial = QByteArrayLiteral("FERROBANDA,CENTRAL\r\n");

QString UserFolder(const QString& homeDir) { return QDir(homeDir).filePath(QStringLiteral("Velmarinda")); }

QString ProgramFolder(const QString& programDir, const QString& currentDir, const QString& homeDir) {
    if (hasDatabase(programDir) || isBuildTree(programDir)) return programDir;
    if (hasDatabase(currentDir)) return currentDir;
    return UserFolder(homeDir);
}

void PrepareUserFolder(const QString& folder) {
    QDir dir(folder);
    if (dir.exists()) return;
    for (const char* sub : {"enviar", "recibir", "importacion", "c/cadenart"}) dir.mkpath(QString::fromLatin1(sub));
    schema::CreateEmptyDatabase(dir.filePath(QStringLiteral("datos.mdb")));
    // The chain's catalogue folder c:\cadenart, with an empty catalogue until
    // the chain's own file replaces it, so that the products window opens.
    CreateEmptyCatalogue(dir.filePath(QStringLiteral("c/cadenart/articulo.dbf")));
    // config.ini with the default installation and the empty database's store
    // (1, CENTRAL), so that the windows that read it with no trap open. Written
    // here, with the folder, and never again: the running program only reads it.
    QFile config(dir.filePath(QStringLiteral("config.ini")));
    if (config.open(QIODevice::WriteOnly)) config.write(kConfiguracionInicial);
}

} // namespace vel

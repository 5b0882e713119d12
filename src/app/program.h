// What the program sees to before its start (Sub Main): somewhere to show its
// windows, the look of its controls and its icon, and its folder (App.Path).
#pragma once
#include <QString>

class QApplication;
class QIcon;

namespace vel {

// Whether the toolkit has somewhere to show the windows: an X11 or Wayland
// display, or another platform named in QT_QPA_PLATFORM (offscreen, vnc...).
bool HasDisplay();
// The one line said on the terminal when it has not.
QString NoDisplayMessage();

// The program's icon (a shop front under an awning), from its SVG.
QIcon ProgramIcon();

// The toolkit set up as the program needs it: Spanish texts, the look of the
// controls, the program's icon on every window and in the about box.
void SetUpApplication(QApplication& app);

// The program's folder (App.Path), where datos.mdb, config.ini, enviar/,
// recibir/ and importacion/ live:
//  - its own folder, when it holds a datos.mdb or is a build tree's bin/ (the
//    run command makes the database there);
//  - otherwise (an installed program) the folder it is started from, when that
//    holds a datos.mdb;
//  - otherwise the user's own folder, ~/Velmarinda.
QString ProgramFolder(const QString& programDir, const QString& currentDir, const QString& homeDir);
// The user's own folder, made on the first run: the folder, its exchange and
// import folders, an empty database, an empty chain catalogue in
// c/cadenart and a config.ini naming the default installation and store 1
// (kConfiguracionInicial, the same the run command writes). A folder that already exists is left
// as it is (a missing datos.mdb in it stops the program, as anywhere else).
void PrepareUserFolder(const QString& folder);
extern const QByteArray kConfiguracionInicial;
QString UserFolder(const QString& homeDir);

} // namespace vel

// Velmarinda: the program's entry point.
#include "app/program.h"
#include "app/window_table.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include <QApplication>
#include <QDir>
#include <cstdio>

int main(int argc, char** argv) {
    // Without a display the toolkit would stop with a message in English.
    if (!vel::HasDisplay()) {
        std::fprintf(stderr, "%s\n", qPrintable(vel::NoDisplayMessage()));
        return 1;
    }
    QApplication app(argc, argv);
    vel::SetUpApplication(app);
    const QString folder =
        vel::ProgramFolder(QCoreApplication::applicationDirPath(), QDir::currentPath(), QDir::homePath());
    if (folder == vel::UserFolder(QDir::homePath())) vel::PrepareUserFolder(folder);
    vb::SetAppPath(folder);
    vel::SetWindowTable(&vel::WindowTable());
    vb::SetEndHandler([] { QCoreApplication::exit(0); });
    vb::RunEvent([] { vel::Main(); });
    if (vb::HasEnded()) return 0;
    const int code = app.exec();
    vel::CloseSession();
    return code;
}

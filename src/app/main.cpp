// Velmarinda: the program's entry point.
#include "app/window_table.h"
#include "core/session.h"
#include "runtime/app.h"
#include "runtime/errors.h"
#include <QApplication>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    vb::InstallSpanish(app);
    vel::SetWindowTable(&vel::WindowTable());
    vb::SetEndHandler([] { QCoreApplication::exit(0); });
    vb::RunEvent([] { vel::Main(); });
    if (vb::HasEnded()) return 0;
    const int code = app.exec();
    vel::CloseSession();
    return code;
}

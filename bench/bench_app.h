// The one application object the window benchmarks need, headless.
#pragma once
#include <QApplication>
#include <cstdlib>

namespace velbench {

inline QApplication& App() {
    static int argc = 1;
    static char name[] = "velbench";
    static char* argv[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    static QApplication app(argc, argv);
    return app;
}

} // namespace velbench

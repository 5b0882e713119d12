// Test entry point: headless Qt application, the program's Spanish runtime.
#include <QApplication>
#include <gtest/gtest.h>
#include <cstdio>
#include <cstdlib>

// The offscreen platform's notes about window hints (and about raising or grabbing
// for the open list of a combo) are noise in test output.
static void quietHandler(QtMsgType type, const QMessageLogContext&, const QString& msg) {
    if (msg.contains(QLatin1String("propagateSizeHints")) || msg.startsWith(QLatin1String("QStandardPaths:")) ||
        msg.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type != QtDebugMsg) fprintf(stderr, "%s\n", qPrintable(msg));
}

int main(int argc, char** argv) {
    qInstallMessageHandler(quietHandler);
    // CTest discovery runs the binary too: it must never need a display.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

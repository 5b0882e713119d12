// Test entry point: headless Qt application, the program's Spanish runtime.
#include <QApplication>
#include <gtest/gtest.h>
#include <cstdlib>

int main(int argc, char** argv) {
    // CTest discovery runs the binary too: it must never need a display.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

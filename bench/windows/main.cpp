// The benchmarks of windows run in a widget application, headless unless a
// platform is chosen: QT_QPA_PLATFORM=xcb under a display measures the real one.
#include <QApplication>
#include <benchmark/benchmark.h>
#include <cstdlib>

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

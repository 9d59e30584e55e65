#include "Picture.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

// Log lines (one per landmark on every detection) would drown the figures.
void quiet(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

// The engine reads pictures through Qt's image plugins, which want an
// application object; no window is shown.
int main(int argc, char** argv)
{
    keepMemoryOfFreedPictures();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quiet);
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

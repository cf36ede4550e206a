#include <benchmark/benchmark.h>
#include <QCoreApplication>
#include <QTimer>

// Runs in an event loop, as the window does; there the engine keeps a read transaction open between reads.
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QTimer::singleShot(0, &application, [&] {
        benchmark::RunSpecifiedBenchmarks();
        QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}

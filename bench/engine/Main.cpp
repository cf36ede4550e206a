#include <benchmark/benchmark.h>
#include <QCoreApplication>
#include <QTimer>

// Inside an event loop, as the window reads: there the engine keeps what it reads in one piece.
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

#include <benchmark/benchmark.h>
#include <QApplication>
#include <QStyleFactory>
#include <QTimer>

// Runs in an event loop, as the program does; there the engine keeps a read transaction open between reads.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    QTimer::singleShot(0, &application, [] {
        benchmark::RunSpecifiedBenchmarks();
        QCoreApplication::quit();
    });
    return QApplication::exec();
}

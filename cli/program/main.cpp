#include <cli/CommandLine.h>
#include <QGuiApplication>

int main(int argc, char **argv)
{
    // Pictures need fonts, not a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    return cli::runCommandLine(QCoreApplication::arguments().mid(1));
}

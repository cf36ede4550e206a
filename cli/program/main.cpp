#include <cli/CommandLine.h>
#include <cstdio>
#include <QGuiApplication>
#include <tarnwick/FileWriter.h>

namespace {

// Standard error is for the command's own messages; the platform's messages about displays are dropped.
void onMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(onMessage);
    tarnwick::makeFileSizeLimitAnError();
    // Pictures need fonts but no display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    return cli::runCommandLine(QCoreApplication::arguments().mid(1));
}

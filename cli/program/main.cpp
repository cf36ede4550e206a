#include <cli/CommandLine.h>
#include <cstdio>
#include <QGuiApplication>
#include <tarnwick/FileWriter.h>

namespace {

// The standard error stream carries the command's own words; the platform's chatter about displays is not for users.
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
    // Pictures need fonts, not a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    return cli::runCommandLine(QCoreApplication::arguments().mid(1));
}

#include "SiblingTools.h"

#include "Messages.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace app {

namespace {

bool runToEnd(const QString &program, const QString &folder, QString &reason)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    // The window stays painted while the tool is open, but takes no input: its files may change under it.
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    process.start(program, QStringList());
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (process.error() != QProcess::FailedToStart)
        return true;
    reason = process.errorString();
    return false;
}

} // namespace

QString findTool(const SiblingTool &tool, const tarnwick::PathRoots &roots)
{
    const QFileInfo info(QDir(roots.palomineDir), u"bin/"_s + QString::fromUtf16(tool.program));
    return info.isFile() && info.isExecutable() ? info.absoluteFilePath() : QString();
}

bool startTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, bool wait, tarnwick::UserPrompts &prompts)
{
    const QString name = QString::fromUtf16(tool.program);
    const QString path = findTool(tool, roots);
    if (path.isEmpty()) {
        prompts.error(messages::kToolNotThere, name,
                      QDir::toNativeSeparators(QDir(roots.palomineDir).filePath(u"bin"_s)));
        return false;
    }
    QString reason;
    const bool started =
        wait ? runToEnd(path, roots.projectDir, reason) : QProcess::startDetached(path, {}, roots.projectDir);
    if (!started)
        prompts.error(messages::kToolNotStarted, name, reason);
    return started;
}

} // namespace app

#include "SiblingTools.h"

#include "Messages.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr int kLookEvery = 50; // ms

/// Path of the tool; empty after reporting that it does not exist.
QString placeOf(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts)
{
    const QString path = findTool(tool, roots);
    if (path.isEmpty())
        prompts.error(messages::kToolNotThere, QString::fromUtf16(tool.program),
                      QDir::toNativeSeparators(QDir(roots.palomineDir).filePath(u"bin"_s)));
    return path;
}

/// Runs the event loop until the started process has ended or the waiting is cancelled.
void waitFor(QProcess &process, QEventLoop &loop, const QString &name, tarnwick::Progress *progress)
{
    QTimer look;
    if (progress) {
        QObject::connect(&look, &QTimer::timeout, &loop, [&loop, &name, progress] {
            progress->report(0, 0, u"Waiting for \""_s + name + u"\" ..."_s);
            if (progress->cancelled())
                loop.quit();
        });
        look.start(kLookEvery);
    }
    // The window is disabled, because its files can change. The progress display enables its own controls.
    if (process.state() != QProcess::NotRunning)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

QString findTool(const SiblingTool &tool, const tarnwick::PathRoots &roots)
{
    const QFileInfo info(QDir(roots.palomineDir), u"bin/"_s + QString::fromUtf16(tool.program));
    return info.isFile() && info.isExecutable() ? info.absoluteFilePath() : QString();
}

bool startTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts)
{
    const QString path = placeOf(tool, roots, prompts);
    if (path.isEmpty())
        return false;
    QProcess process;
    process.setProgram(path);
    process.setWorkingDirectory(roots.projectDir);
    if (process.startDetached())
        return true;
    prompts.error(messages::kToolNotStarted, QString::fromUtf16(tool.program), process.errorString());
    return false;
}

bool runTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts,
             tarnwick::Progress *progress)
{
    const QString path = placeOf(tool, roots, prompts);
    if (path.isEmpty())
        return false;
    const QString name = QString::fromUtf16(tool.program);
    auto process = std::make_unique<QProcess>();
    process->setWorkingDirectory(roots.projectDir);
    // The tool can outlive this program, so nobody may have to read its output.
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    QEventLoop loop;
    QObject::connect(process.get(), &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(process.get(), &QProcess::errorOccurred, &loop, [&loop](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) // after any other error the process runs or has finished
            loop.quit();
    });
    process->start(path, QStringList());
    waitFor(*process, loop, name, progress);
    if (process->state() == QProcess::NotRunning) {
        if (process->error() != QProcess::FailedToStart)
            return true;
        prompts.error(messages::kToolNotStarted, name, process->errorString());
        return false;
    }
    // Destroying the QProcess would end the tool.
    QProcess *left = process.release();
    QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
    prompts.status(messages::kToolLeftOpen, name);
    return false;
}

} // namespace app

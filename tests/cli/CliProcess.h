#pragma once
#include <gtest/gtest.h>
#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <sys/resource.h>

/// What one run of the real arvo-cli program gave.
struct CliResult
{
    int status = -1;
    QString output;
    QString error;
    QJsonObject json() const { return QJsonDocument::fromJson(output.toUtf8()).object(); }
};

/// Runs the real program with its own installation folder, so that no setting of this machine counts.
class CliProcess
{
public:
    CliProcess()
    {
        m_environment.insert(QStringLiteral("PALOMINE_DIR"), m_installation.path());
        m_environment.insert(QStringLiteral("XDG_STATE_HOME"), m_installation.filePath(QStringLiteral("state")));
    }

    /// fileSizeLimit: no file can be written beyond so many bytes, as on a full disk; -1 for no limit.
    CliResult run(const QStringList &arguments, qint64 fileSizeLimit = -1) const
    {
        const auto process = start(arguments, fileSizeLimit);
        return resultOf(*process, arguments);
    }

    /// For runs at the same time.
    std::unique_ptr<QProcess> start(const QStringList &arguments, qint64 fileSizeLimit = -1) const
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(m_environment);
        process->setWorkingDirectory(m_folder);
        if (fileSizeLimit >= 0)
            process->setChildProcessModifier([fileSizeLimit] {
                const rlimit limit{rlim_t(fileSizeLimit), rlim_t(fileSizeLimit)};
                ::setrlimit(RLIMIT_FSIZE, &limit);
            });
        process->start(QStringLiteral(ARVO_CLI), arguments);
        return process;
    }
    static CliResult resultOf(QProcess &process, const QStringList &arguments)
    {
        CliResult result;
        // Generous: the sanitizers' build is slow, a hang is what this catches.
        if (!process.waitForFinished(300'000) || process.exitStatus() != QProcess::NormalExit) {
            ADD_FAILURE() << "arvo-cli " << qPrintable(arguments.join(u' ')) << " did not end by itself";
            return result;
        }
        result.status = process.exitCode();
        result.output = QString::fromUtf8(process.readAllStandardOutput());
        result.error = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

    CliResult mustRun(const QStringList &arguments) const
    {
        CliResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << qPrintable(arguments.join(u' ')) << "\n" << qPrintable(result.error);
        return result;
    }

    void setVariable(const QString &name, const QString &value) { m_environment.insert(name, value); }
    /// The current folder of the runs; that of the test without it.
    void setFolder(const QString &path) { m_folder = path; }
    const QProcessEnvironment &environment() const { return m_environment; }
    QString installation() const { return m_installation.path(); }

private:
    QTemporaryDir m_installation;
    QString m_folder;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

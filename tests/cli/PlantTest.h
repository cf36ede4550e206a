#pragma once
#include "CliProcess.h"

#include <support/Files.h>

/// A small project, and the real program.
class PlantTest : public ::testing::Test
{
protected:
    explicit PlantTest(int entries = 60)
    {
        cli.mustRun({QStringLiteral("demo"), project, QStringLiteral("--tubes"), QStringLiteral("150"),
                     QStringLiteral("--entries"), QString::number(entries), QStringLiteral("--outages"),
                     QStringLiteral("1")});
    }
    void uploadComponent() const
    {
        cli.mustRun({QStringLiteral("upload-component"), project, QStringLiteral("--yes")});
    }
    /// Makes a file beside the project and returns its path.
    QString file(const QString &name, const QByteArray &content) const
    {
        return support::writeFile(folder.filePath(name), content);
    }
    /// The first value of a statement on the project or another database.
    qint64 number(const QString &statement, const QString &target = {}) const
    {
        return cli
            .mustRun({QStringLiteral("sql"), target.isEmpty() ? project : target, statement, QStringLiteral("--format"),
                      QStringLiteral("json")})
            .json()[u"rows"][0][0]
            .toInteger(-1);
    }

    CliProcess cli;
    QTemporaryDir folder;
    QString project = folder.filePath(QStringLiteral("plant's project"));
};

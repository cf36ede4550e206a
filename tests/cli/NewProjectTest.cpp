#include "CliProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <support/Files.h>

using namespace Qt::StringLiterals;

TEST(NewProjectCommandTest, AKilledRunLeavesNoProjectAndTheNextOneSucceeds)
{
    const QTemporaryDir dir;
    const CliProcess cli;
    QByteArray table("row,col\n");
    for (int tube = 0; tube < 60'000; ++tube)
        table += QByteArray::number(tube / 300) + ',' + QByteArray::number(tube % 300) + '\n';
    const QStringList command{u"new-project"_s, dir.filePath(u"plant"_s),
                              u"--site"_s,      u"S1"_s,
                              u"--comp"_s,      u"SGA"_s,
                              u"--outage"_s,    u"R1"_s,
                              u"--component"_s, support::writeFile(dir.filePath(u"tubes.csv"_s), table),
                              u"--pitch"_s,     u"1"_s,
                              u"--pattern"_s,   u"square"_s};
    const auto unfinished = [&] { return QDir(dir.path()).entryList({u"arvo-*.new"_s}, QDir::Dirs); };
    const auto process = cli.start(command);
    const auto hasDatabase = [&] {
        const QStringList found = unfinished();
        return !found.isEmpty() && QDir(dir.filePath(found.first() + u"/arvo")).count() > 2;
    };
    QElapsedTimer time;
    for (time.start(); !hasDatabase() && time.elapsed() < 100'000;)
        QThread::msleep(1);
    ASSERT_TRUE(hasDatabase());
    process->kill();
    process->waitForFinished(-1);
    ASSERT_FALSE(unfinished().isEmpty()) << "killed too late for this test";
    EXPECT_FALSE(QFile::exists(dir.filePath(u"plant"_s)));
    EXPECT_FALSE(QFile::exists(dir.filePath(unfinished().first() + u"/project.json")));

    EXPECT_TRUE(cli.mustRun(command).output.contains(u"60000 tubes, rows 0 to 199, columns 0 to 299"));
    EXPECT_EQ(unfinished(), QStringList());
    EXPECT_EQ(cli.run(command).status, 1) << "an existing project is refused";
}

#include "PlantTest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

/// On a full disk every command that writes says so and leaves each file as it was, whole.
class FullDiskTest : public PlantTest
{
protected:
    FullDiskTest()
    {
        cli.mustRun(QStringList{u"convert"_s, project, u"--yes"_s} + below(u"foreign"_s, u"*.txt"_s));
        uploadComponent();
        cli.mustRun({u"fill"_s, project, u"random"_s, u"--percent"_s, u"20"_s, u"--map"_s, map});
        for (const QString &field : {u"x"_s, u"y"_s})
            cli.mustRun({u"sql"_s, project, u"ALTER TABLE tubes DROP COLUMN "_s + field});
        support::writeFile(tubes, "SELECT row, col FROM tubes");
        cli.mustRun({u"store-query"_s, project, u"tubes of it"_s, tubes});
        cli.mustRun({u"formats"_s, project, u"--export"_s, formats});
        for (const QString &ending : QStringList{u"svg"_s, u"emf"_s, u"png"_s, u"bmp"_s, u"jpg"_s} + kExports)
            file(u"p."_s + ending, "an older file");
    }

    QMap<QString, QByteArray> everyFile() const
    {
        QMap<QString, QByteArray> files;
        // Beside the installation's state: the log of errors says what it can.
        for (const QString &root : {folder.path(), QString(cli.installation() + u"/config"_s)}) {
            QDirIterator entries(root, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
            while (entries.hasNext()) {
                const QString path = entries.next();
                files[path] = support::readFile(path);
            }
        }
        return files;
    }
    QStringList below(const QString &subfolder, const QString &pattern) const
    {
        QStringList paths;
        for (const QFileInfo &file : QDir(project + u'/' + subfolder).entryInfoList({pattern}, QDir::Files))
            paths.append(file.filePath());
        return paths;
    }

    QString map = project + u"/maps/plan.map"_s;
    QString tubes = project + u"/queries/tubes.qry"_s;
    QString formats = folder.filePath(u"formats.opt"_s);
    const QStringList kExports{u"txt"_s, u"csv"_s, u"xlsx"_s, u"pdf"_s};
};

} // namespace

TEST_F(FullDiskTest, NoCommandSaysThatItWroteWhatItDidNot)
{
    QList<QStringList> commands{
        {u"create"_s, folder.filePath(u"new.mdb"_s)},
        {u"demo"_s, folder.filePath(u"new project"_s), u"--tubes"_s, u"150"_s},
        QStringList{u"convert"_s, project, u"--yes"_s} + below(u"foreign"_s, u"*.txt"_s),
        QStringList{u"upload"_s, project, u"--yes"_s} + below(u"reports"_s, u"*.rep"_s),
        {u"upload-component"_s, project, u"--yes"_s},
        {u"sql"_s, project, u"UPDATE tubes SET is_marked = True"_s},
        {u"store-query"_s, project, u"tubes of it"_s, project + u"/queries/cracks.qry"_s, u"--yes"_s},
        {u"delete-query"_s, project, u"tubes of it"_s},
        {u"formats"_s, project, u"--import"_s, formats},
        {u"formats"_s, project, u"--export"_s, formats},
        {u"connect"_s, project, u"--convert"_s, u"yes"_s},
        {u"fill"_s, project, u"pattern"_s, u"--row-inc"_s, u"3"_s, u"--map"_s, map},
    };
    for (const QString &ending : kExports)
        commands.append({u"query"_s, project, u"tubes of it"_s, u"--out"_s, folder.filePath(u"p."_s + ending)});
    for (const QString &ending : {u"pdf"_s, u"svg"_s, u"emf"_s, u"png"_s, u"bmp"_s, u"jpg"_s})
        commands.append({u"map"_s, project, u"--map"_s, map, u"--out"_s, folder.filePath(u"p."_s + ending)});
    const QString samples = qEnvironmentVariable("ARVO_TESTDATA");
    if (!samples.isEmpty())
        commands.append({u"import"_s, samples + u"/suite-old-2.mdb"_s, u"--out"_s, folder.filePath(u"jet.mdb"_s)});
    const QMap<QString, QByteArray> before = everyFile();
    ASSERT_GT(before.size(), 10);
    for (const QStringList &command : commands) {
        SCOPED_TRACE(command.join(u' ').toStdString());
        const CliResult result = cli.run(command, 0);
        EXPECT_EQ(result.status, 1) << qPrintable(result.output);
        EXPECT_FALSE(result.error.isEmpty());
        const QMap<QString, QByteArray> after = everyFile();
        EXPECT_EQ(after.keys(), before.keys());
        for (auto file = before.cbegin(); file != before.cend(); ++file)
            EXPECT_EQ(after.value(file.key()), file.value()) << qPrintable(file.key());
    }
}

TEST_F(FullDiskTest, AReallyFullFileSystemKeepsTheOldMap)
{
    // In a name space of its own, where that is allowed: two pages, one for the map, one to fill the rest.
    const QString script =
        u"mount -t tmpfs -o size=8k none \"$1\" && cp \"$3\" \"$1/a.map\" && "
        "{ cat /dev/zero > \"$1/rest\"; \"$0\" fill \"$2\" pattern --row-inc 3 --map \"$1/a.map\" >&2; "
        "echo \"status $?\"; ls -A \"$1\"; cmp \"$3\" \"$1/a.map\" && echo same; }"_s;
    const QString mounted = folder.filePath(u"mounted"_s);
    ASSERT_TRUE(QDir().mkpath(mounted));
    QProcess process;
    process.start(u"unshare"_s, {u"--user"_s, u"--map-root-user"_s, u"--mount"_s, u"sh"_s, u"-c"_s, script,
                                 QStringLiteral(ARVO_CLI), mounted, project, map});
    if (!process.waitForFinished(60'000))
        GTEST_SKIP() << "there is no unshare here";
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    const QString error = QString::fromUtf8(process.readAllStandardError());
    if (!output.startsWith(u"status"_s))
        GTEST_SKIP() << "no file system can be mounted here: " << qPrintable(error);
    EXPECT_EQ(output, u"status 1\na.map\nrest\nsame\n"_s);
    EXPECT_TRUE(error.contains(u"No space left on device"_s)) << qPrintable(error);
}

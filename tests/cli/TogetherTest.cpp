#include "PlantTest.h"

#include <QDir>
#include <QFile>
#include <query/QueryHistoryList.h>
#include <support/Marks.h>

using namespace Qt::StringLiterals;

namespace {

// Several runs of the program, and the window beside them, work on the same files.
class TogetherTest : public PlantTest
{
protected:
    TogetherTest()
        : PlantTest(600)
    {
    }

    /// Runs them at the same time; all must succeed.
    void mustRunAll(const QList<QStringList> &runs) const
    {
        std::vector<std::unique_ptr<QProcess>> processes;
        for (const QStringList &arguments : runs)
            processes.push_back(cli.start(arguments));
        for (qsizetype i = 0; i < runs.size(); ++i) {
            const CliResult result = CliProcess::resultOf(*processes[size_t(i)], runs[i]);
            EXPECT_EQ(result.status, 0) << qPrintable(runs[i].join(u' ')) << "\n" << qPrintable(result.error);
        }
    }
    qint64 rowCount() const { return number(u"SELECT COUNT(*) FROM report"_s); }
};

} // namespace

TEST_F(TogetherTest, UploadsAndFillsWaitForOneAnother)
{
    const QString foreign = project + u"/foreign/"_s;
    QStringList convert{u"convert"_s, project};
    for (const QString &name : QDir(foreign).entryList({u"*.txt"_s}, QDir::Files))
        convert.append(foreign + name);
    cli.mustRun(convert);
    QStringList reports;
    for (const QString &name : QDir(project + u"/reports"_s).entryList({u"*.rep"_s}, QDir::Files))
        reports.append(project + u"/reports/"_s + name);
    ASSERT_FALSE(reports.isEmpty());
    const auto upload = [&](const QString &answer) {
        return QStringList{u"upload"_s, project} + reports + QStringList{u"--answers"_s, answer};
    };
    cli.mustRun(upload(u"yes"_s));
    const qint64 rows = rowCount();
    ASSERT_GT(rows, 0);
    mustRunAll(QList<QStringList>(4, upload(u"no"_s))); // no: beside the rows that are there
    EXPECT_EQ(rowCount(), 5 * rows);

    const QString map = project + u"/maps/shared.map"_s;
    QList<QStringList> fills;
    for (const QChar symbol : u"ABCDEF"_s)
        fills.append({u"fill"_s, project, u"random"_s, u"--count"_s, u"5"_s, u"--map"_s, map, u"--symbol"_s, symbol});
    mustRunAll(fills);
    const QString legend =
        cli.mustRun({u"map"_s, project, u"--map"_s, map, u"--out"_s, folder.filePath(u"a.png"_s)}).output;
    for (const QChar symbol : u"ABCDEF"_s)
        EXPECT_TRUE(legend.contains(QRegularExpression(u"(?m)^\\s*"_s + symbol + u"\\s"_s))) << qPrintable(legend);
    EXPECT_EQ(QDir(project + u"/maps"_s).entryList({u"*.lock"_s}), QStringList());
}

TEST_F(TogetherTest, TheWindowsHistoryStaysAndItsMarksAreTaken)
{
    const QString query = u"depth_40_and_above.qry"_s;
    ASSERT_TRUE(QFile::exists(project + u"/queries/"_s + query));
    const tarnwick::PathRoots roots{cli.installation(), project};
    query::QueryHistoryList history;
    history.remember(u"queries\\"_s + query, u"least"_s, u"60"_s);
    history.setMark(u"queries\\"_s + query, markOf(u'W', 0x00FF00));
    history.storeChanges(roots);
    uploadComponent();

    cli.mustRun({u"sql"_s, project, u"SELECT row FROM tubes WHERE row = [least]"_s, u"--param"_s, u"least=1"_s});
    const CliResult made = cli.mustRun(
        {u"map"_s, project, u"--query"_s, project + u"/queries/"_s + query, u"--out"_s, folder.filePath(u"a.png"_s)});
    EXPECT_TRUE(made.output.contains(QRegularExpression(u"(?m)^\\s*W\\s"_s))) << qPrintable(made.output);
    query::QueryHistoryList read;
    ASSERT_TRUE(read.load(roots));
    EXPECT_EQ(read.entries(), history.entries());
}

TEST_F(TogetherTest, ConversionsWaitForOneAnother)
{
    const QString database = project + u"/arvo/project.mdb"_s;
    const QStringList convert{u"connect"_s, project, u"--convert"_s, u"yes"_s};
    QStringList shapes{QString()};
    if (qEnvironmentVariableIsSet("ARVO_TESTDATA"))
        shapes.append(QDir(qEnvironmentVariable("ARVO_TESTDATA")).filePath(u"suite-old-2.mdb"_s));
    for (const QString &sample : shapes) {
        SCOPED_TRACE(sample.toStdString());
        if (sample.isEmpty()) {
            uploadComponent();
            cli.mustRun({u"sql"_s, project, u"ALTER TABLE tubes DROP COLUMN x"_s});
            cli.mustRun({u"sql"_s, project, u"DROP TABLE repairs"_s});
        } else {
            for (const QString &name : {database, QString(project + u"/arvo/project._db"_s)})
                EXPECT_TRUE(QFile::remove(name));
            ASSERT_TRUE(QFile::copy(sample, database));
            ASSERT_TRUE(QFile::setPermissions(database, QFile::ReadOwner | QFile::WriteOwner));
        }
        const QByteArray before = support::readFile(database);
        mustRunAll(QList<QStringList>(4, convert));
        EXPECT_EQ(support::readFile(project + u"/arvo/project._db"_s), before);
        EXPECT_EQ(QDir(project + u"/arvo"_s).entryList({u"project*"_s}, QDir::Files),
                  (QStringList{u"project._db"_s, u"project.mdb"_s}));
        EXPECT_EQ(cli.mustRun({u"sql"_s, project, u"SELECT x FROM tubes WHERE row = -1"_s}).status, 0);
        EXPECT_TRUE(cli.mustRun({u"check"_s, project}).output.endsWith(u"project.mdb: no damage found\n"_s));
    }
}

TEST_F(TogetherTest, DatabasesAreCheckedAndTheirStateIsTold)
{
    const QString database = project + u"/arvo/project.mdb"_s;
    uploadComponent();
    EXPECT_TRUE(cli.mustRun({u"check"_s, project}).output.endsWith(u"project.mdb: no damage found\n"_s));
    const QJsonObject schema = cli.mustRun({u"schema"_s, project, u"tubes"_s, u"--format"_s, u"json"_s}).json();
    EXPECT_FALSE(schema[u"readOnly"].toBool(true));
    EXPECT_EQ(schema[u"tables"][0][u"indexes"][0][u"fields"].toArray(), (QJsonArray{u"sec"_s, u"row"_s, u"col"_s}));
    EXPECT_FALSE(cli.mustRun({u"schema"_s, project}).output.section(u'\n', 0, 0).contains(u"read only"));

    QFile file(database);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    constexpr int kPage = 4096;
    ASSERT_TRUE(file.seek((file.size() / kPage - 1) * kPage));
    file.write(QByteArray(kPage, 'z'));
    file.close();
    const CliResult damaged = cli.run({u"check"_s, database});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(damaged.output.contains(u"damaged.\n"_s)) << qPrintable(damaged.output + damaged.error);
    EXPECT_TRUE(damaged.output.endsWith(u"project.mdb: damaged\n"_s));
}

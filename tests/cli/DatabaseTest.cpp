#include "PlantTest.h"

#include <csignal>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// Databases come and go, through the real program.
class DatabaseCommandsTest : public PlantTest
{
protected:
    static QString sample(const QString &name)
    {
        return QDir(qEnvironmentVariable("ARVO_TESTDATA")).filePath(name + u".mdb"_s);
    }

    QString database = project + u"/arvo/project.mdb"_s;
    QString backup = project + u"/arvo/project._db"_s;
};

} // namespace

TEST_F(DatabaseCommandsTest, ComponentIsUploadedAfterAQuestion)
{
    const CliResult asked = cli.run({u"upload-component"_s, project});
    EXPECT_EQ(asked.status, 1);
    EXPECT_TRUE(asked.error.contains(u"Are you sure you wish to upload the component to the database?\n"
                                     "answered: No (answer with --yes, --no or --answers)"_s))
        << qPrintable(asked.error);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes"_s), 0);

    const CliResult done = cli.mustRun({u"upload-component"_s, project, u"--yes"_s});
    const qint64 tubes = number(u"SELECT COUNT(*) FROM tubes"_s);
    EXPECT_GT(tubes, 100);
    EXPECT_TRUE(done.output.startsWith(u"Successfully uploaded model. %1 tubes, "_s.arg(tubes)))
        << qPrintable(done.output);
    uploadComponent();
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes"_s), tubes);
}

TEST_F(DatabaseCommandsTest, LookingAtADatabaseDoesNotChangeIt)
{
    const QString made = folder.filePath(u"made.mdb"_s);
    cli.mustRun({u"create"_s, made});
    const QByteArray before = support::readFile(made);
    cli.mustRun({u"schema"_s, made});
    cli.mustRun({u"explain"_s, made, u"SELECT * FROM report"_s});
    EXPECT_EQ(support::readFile(made), before);
    cli.mustRun({u"connect"_s, made});
    EXPECT_NE(support::readFile(made), before) << "its views are made when it is worked with";
}

TEST_F(DatabaseCommandsTest, RoundNumbersHaveNoExponent)
{
    uploadComponent();
    const QString statement =
        u"SELECT 100000.0 * 1 AS a, 0.1 + 0.2 AS b, 1E15 * 1 AS c, CSng(2.1) AS d, CCur(120000) AS e, 0.0 AS f"_s;
    EXPECT_EQ(cli.mustRun({u"sql"_s, project, statement, u"--format"_s, u"csv"_s}).output,
              u"a,b,c,d,e,f\r\n100000,0.3,1E+15,2.1,120000,0\r\n"_s);
    const QString json = cli.mustRun({u"sql"_s, project, statement, u"--format"_s, u"json"_s}).output;
    EXPECT_TRUE(json.contains(u"[100000,0.30000000000000004,1e+15,2.1,120000,0]"_s)) << qPrintable(json);
}

TEST_F(DatabaseCommandsTest, FailuresOfAStatementLeaveWhatWasReadAndTheFormIntact)
{
    const QString made = folder.filePath(u"made.mdb"_s);
    cli.mustRun({u"create"_s, made});
    cli.mustRun({u"sql"_s, made, u"CREATE TABLE n (id LONG PRIMARY KEY, a DOUBLE)"_s});
    for (const QString &row : {u"(1, 2)"_s, u"(2, 0)"_s, u"(3, -4)"_s})
        cli.mustRun({u"sql"_s, made, u"INSERT INTO n VALUES "_s + row});
    const auto run = [&](const QString &statement, const QString &format) {
        return cli.run({u"sql"_s, made, statement, u"--format"_s, format});
    };

    const QString cells = u"SELECT id, 1 / a AS x, Sqr(a) AS y FROM n"_s;
    EXPECT_EQ(run(cells, u"csv"_s).output, u"id,x,y\r\n1,0.5,1.4142135623731\r\n2,#Div/0!,0\r\n3,-0.25,#Error\r\n"_s);
    const CliResult kept = run(cells, u"json"_s);
    EXPECT_EQ(kept.status, 0);
    EXPECT_EQ(kept.json()[u"rows"][1][1][u"error"].toInt(), 11);
    EXPECT_EQ(kept.error,
              u"warning: 2 cells could not be calculated: 1 by [5] Invalid procedure call or argument, 1 by "
              u"[11] Division by zero.\n"_s);

    const QString condition = u"SELECT id FROM n WHERE 1 / a > 0"_s;
    const CliResult json = run(condition, u"json"_s);
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(json.json()[u"rows"].toArray().size(), 1);
    EXPECT_EQ(json.json()[u"error"][u"number"].toInt(), 11) << qPrintable(json.output);
    EXPECT_EQ(json.json()[u"error"][u"text"].toString(), u"Division by zero."_s);
    const CliResult csv = run(condition, u"csv"_s);
    EXPECT_EQ(csv.status, 1);
    EXPECT_EQ(csv.output, u"id\r\n1\r\n"_s);
    EXPECT_TRUE(csv.error.contains(u"[11] DAO."_s)) << qPrintable(csv.error);
    EXPECT_EQ(run(condition, u"table"_s).output, u"id\n--\n 1\n(1 row, incomplete)\n"_s);
    // Before the first row.
    const std::pair<QString, int> refused[] = {{u"SELECT * FROM none"_s, 3078}, {u"SELECT [who] AS x"_s, 3061}};
    for (const auto &[statement, expected] : refused)
        EXPECT_EQ(run(statement, u"json"_s).json()[u"error"][u"number"].toInt(), expected) << qPrintable(statement);

    const CliResult noFile =
        cli.run({u"sql"_s, folder.filePath(u"none.mdb"_s), u"SELECT 1"_s, u"--format"_s, u"json"_s});
    EXPECT_EQ(noFile.json()[u"error"][u"number"].toInt(), 1032) << qPrintable(noFile.output + noFile.error);

    // Ctrl+C in the middle of the rows.
    QStringList many;
    for (int i = 0; i < 16; ++i)
        many.append(u"n AS n%1"_s.arg(i));
    const QStringList arguments = {u"sql"_s, made, u"SELECT n1.id FROM "_s + many.join(u", "_s), u"--format"_s,
                                   u"json"_s};
    const auto process = cli.start(arguments);
    ASSERT_TRUE(process->waitForReadyRead());
    ::kill(pid_t(process->processId()), SIGINT);
    const CliResult stopped = CliProcess::resultOf(*process, arguments);
    EXPECT_EQ(stopped.status, 1);
    EXPECT_EQ(stopped.json()[u"error"][u"number"].toInt(), 3059);
    EXPECT_GT(stopped.json()[u"rows"].toArray().size(), 0);
}

TEST_F(DatabaseCommandsTest, ConnectTellsStepsAnswerAndBackup)
{
    uploadComponent();
    for (const QString &field : {u"x"_s, u"y"_s})
        cli.mustRun({u"sql"_s, project, u"ALTER TABLE tubes DROP COLUMN "_s + field});
    cli.mustRun({u"sql"_s, project, u"DROP TABLE leg_alias"_s});
    cli.run({u"sql"_s, project, u"SELECT 1"_s}); // brings the views up to date
    const QByteArray before = support::readFile(database);

    const CliResult declined = cli.mustRun({u"connect"_s, project});
    EXPECT_TRUE(declined.output.contains(u"question: Do you wish to convert:\n\n\t\""_s + database));
    EXPECT_TRUE(declined.output.contains(u"answered: No (answer with --convert yes or --convert no)"_s));
    EXPECT_TRUE(declined.output.endsWith(u"Connected to \"project.mdb\".\nNot converted:\n"
                                         "    1) Modified tubes table.\n    2) Created leg_alias table.\n"
                                         "Database: "_s +
                                         database + u'\n'))
        << qPrintable(declined.output);
    EXPECT_EQ(support::readFile(database), before);
    EXPECT_FALSE(QFile::exists(backup));

    const CliResult converted = cli.mustRun({u"connect"_s, project, u"--convert"_s, u"yes"_s});
    EXPECT_TRUE(converted.output.contains(u"answered: Yes\n"_s));
    EXPECT_TRUE(converted.output.endsWith(u"Backup: %1\nDatabase: %2\n"_s.arg(backup, database)))
        << qPrintable(converted.output);
    EXPECT_EQ(support::readFile(backup), before);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM tubes WHERE x = 0"_s), number(u"SELECT COUNT(*) FROM tubes"_s));

    const QByteArray after = support::readFile(database);
    EXPECT_EQ(cli.mustRun({u"connect"_s, database}).output,
              u"Connected to \"project.mdb\".\nDatabase: %1\n"_s.arg(database));
    EXPECT_EQ(support::readFile(database), after) << "connecting once more writes nothing";
    const CliResult maybe = cli.run({u"connect"_s, project, u"--convert"_s, u"maybe"_s});
    EXPECT_EQ(maybe.status, 2);
    EXPECT_TRUE(maybe.error.contains(u"--convert is yes or no."_s)) << qPrintable(maybe.error);
    EXPECT_EQ(cli.run({u"connect"_s, project + u"/none.mdb"_s}).status, 1);

    // Elsewhere nothing is converted, and a wish that is not granted is no success.
    const QString elsewhere = folder.filePath(u"old.mdb"_s);
    ASSERT_TRUE(QFile::copy(backup, elsewhere));
    const CliResult refused = cli.run({u"connect"_s, elsewhere, u"--convert"_s, u"yes"_s});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.output.contains(u"since it is not in the current project."_s)) << qPrintable(refused.output);
    EXPECT_EQ(support::readFile(elsewhere), before);
}

TEST_F(DatabaseCommandsTest, JetFilesAreReadAndConverted)
{
    if (qEnvironmentVariableIsEmpty("ARVO_TESTDATA"))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    const QByteArray jet = support::readFile(sample(u"suite-old-2"_s));
    support::writeFile(database, jet);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 1200);
    const CliResult refused = cli.run({u"sql"_s, project, u"DELETE FROM report"_s});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.error.contains(u"[3027]"_s)) << qPrintable(refused.error);

    const CliResult declined = cli.mustRun({u"connect"_s, project, u"--convert"_s, u"no"_s});
    EXPECT_TRUE(declined.output.endsWith(u"    6) Created leg_alias table.\nDatabase: %1 READ ONLY\n"_s.arg(database)))
        << qPrintable(declined.output);
    EXPECT_EQ(support::readFile(database), jet);
    const CliResult converted = cli.mustRun({u"connect"_s, project, u"--convert=yes"_s});
    EXPECT_EQ(support::readFile(backup), jet);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 1200);
}

TEST_F(DatabaseCommandsTest, JetFilesAreImportedWhole)
{
    if (qEnvironmentVariableIsEmpty("ARVO_TESTDATA"))
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    const QString made = folder.filePath(u"new.mdb"_s);
    const CliResult whole = cli.mustRun({u"import"_s, sample(u"suite-current"_s), u"--out"_s, made});
    EXPECT_TRUE(whole.output.contains(u"report              11961\n"_s)) << qPrintable(whole.output);
    EXPECT_TRUE(whole.output.endsWith(u"Jet 4: 12 tables with 16883 rows, 2 relations, 11 stored queries.\n"
                                      "Everything was carried over.\n"_s))
        << qPrintable(whole.output);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s, made), 11961);
    EXPECT_EQ(cli.run({u"import"_s, sample(u"suite-current"_s), u"--out"_s, made}).status, 1);
    EXPECT_EQ(cli.run({u"import"_s, sample(u"suite-current"_s)}).status, 2);

    const CliResult forms = cli.mustRun({u"import"_s, sample(u"nwind"_s), u"--out"_s, folder.filePath(u"n.mdb"_s)});
    EXPECT_TRUE(forms.output.contains(u"could not be carried over as it is:\n    "_s)) << qPrintable(forms.output);

    const QString cut = folder.filePath(u"cut.mdb"_s);
    support::writeFile(cut, support::readFile(sample(u"suite-old-1"_s)).left(200 * 4096));
    const QString rest = folder.filePath(u"rest.mdb"_s);
    const CliResult refused = cli.run({u"import"_s, cut, u"--out"_s, rest});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.error.contains(u"[3049]"_s) && refused.error.contains(u"cut.mdb"_s))
        << qPrintable(refused.error);
    EXPECT_FALSE(QFile::exists(rest));
    const CliResult salvaged = cli.mustRun({u"import"_s, cut, u"--out"_s, rest, u"--damaged"_s});
    EXPECT_TRUE(salvaged.output.contains(u"could not be read"_s)) << qPrintable(salvaged.output);
    EXPECT_TRUE(QFile::exists(rest));
}

#include "CliProcess.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <support/Files.h>

using namespace Qt::StringLiterals;

namespace {

QStringList filesIn(const QString &folder, const QString &pattern)
{
    QStringList paths;
    const QStringList names = QDir(folder).entryList({pattern}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        paths.append(folder + u'/' + name);
    return paths;
}

// One job from a foreign text to marked tubes, through the real program; the demo project is made once.
class EndToEndTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_folder = new QTemporaryDir;
        s_cli = new CliProcess;
        s_project = s_folder->filePath(u"demo project"_s);
        s_cli->mustRun({u"demo"_s, s_project, u"--tubes"_s, u"800"_s, u"--entries"_s, u"6000"_s});
    }
    static void TearDownTestSuite()
    {
        delete s_cli;
        delete s_folder;
    }

    static QJsonObject sql(const QString &statement)
    {
        return s_cli->mustRun({u"sql"_s, s_project, statement, u"--format"_s, u"json"_s}).json();
    }
    static qint64 number(const QString &statement) { return sql(statement)[u"rows"][0][0].toInteger(-1); }

    static inline QTemporaryDir *s_folder = nullptr;
    static inline CliProcess *s_cli = nullptr;
    static inline QString s_project;
};

} // namespace

TEST_F(EndToEndTest, ForeignTextBecomesMarkedTubes)
{
    // Convert: the foreign texts of the present outage become report files.
    const QStringList texts = filesIn(s_project + u"/foreign"_s, u"*.txt"_s);
    ASSERT_FALSE(texts.isEmpty());
    const QStringList before = filesIn(s_project + u"/reports"_s, u"*.rep"_s);
    s_cli->mustRun(QStringList{u"convert"_s, s_project} + texts + QStringList{u"--yes"_s});
    const QStringList reports = filesIn(s_project + u"/reports"_s, u"*.rep"_s);
    EXPECT_GT(reports.size(), before.size());

    // Upload: makes the database and stores every result entry.
    const QString database = s_project + u"/arvo/project.mdb"_s;
    ASSERT_FALSE(QFile::exists(database));
    const CliResult uploaded = s_cli->mustRun(QStringList{u"upload"_s, s_project} + reports + QStringList{u"--yes"_s});
    ASSERT_TRUE(QFile::exists(database));
    qint64 stored = 0;
    for (const QString &line : uploaded.output.split(u'\n', Qt::SkipEmptyParts))
        stored += line.section(u"Successfully uploaded "_s, 1).section(u' ', 0, 0).remove(u',').toInt();
    EXPECT_GT(stored, 1000);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), stored);

    // Query: three spellings of one question agree.
    const QString deep = u"SELECT DISTINCT sec, row, col FROM report WHERE pcnt >= 40 AND defect <> 'NDD'"_s;
    const QJsonObject rows = sql(deep);
    EXPECT_EQ(rows[u"columns"][1][u"name"].toString(), u"row"_s);
    EXPECT_EQ(rows[u"columns"][1][u"type"].toString(), u"Integer"_s);
    const qint64 tubes = rows[u"rows"].toArray().size();
    EXPECT_GT(tubes, 0);
    EXPECT_EQ(number(u"SELECT COUNT(*) FROM (SELECT DISTINCT sec, row, col FROM report WHERE pcnt >= 40) AS t"_s),
              tubes);
    const CliResult csv = s_cli->mustRun({u"sql"_s, s_project, deep, u"--format"_s, u"csv"_s});
    EXPECT_EQ(csv.output.count(u"\r\n"_s), tubes + 1);

    // Map: the query's tubes are marked, and the legend's counts are those of the query.
    const QString query = s_folder->filePath(u"deep %4.qry"_s);
    support::writeFile(query, deep.toUtf8());
    const QString picture = s_folder->filePath(u"map.png"_s);
    const CliResult map = s_cli->mustRun({u"map"_s, s_project, u"--query"_s, query, u"--out"_s, picture});
    EXPECT_TRUE(map.output.contains(u"deep %4.qry"_s)) << qPrintable(map.output);
    EXPECT_TRUE(map.output.contains(QString::number(tubes))) << qPrintable(map.output);
    const QImage image(picture);
    ASSERT_FALSE(image.isNull());
    EXPECT_GT(image.width(), 800);
}

TEST_F(EndToEndTest, FailuresAreToldAndLeaveFilesAsTheyWere)
{
    const QString bad = s_folder->filePath(u"bad.rep"_s);
    support::writeFile(bad, "kind\tsec\trow\nresult\t0\n");
    const CliResult upload = s_cli->run({u"upload"_s, s_project, bad});
    EXPECT_EQ(upload.status, 1);
    EXPECT_TRUE(upload.error.contains(u"bad.rep"_s)) << qPrintable(upload.error);

    const CliResult missing = s_cli->run({u"sql"_s, s_folder->filePath(u"nothing"_s), u"SELECT 1"_s});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.error.contains(u"nothing"_s)) << qPrintable(missing.error);

    const QString foreign = s_folder->filePath(u"text.mdb"_s);
    support::writeFile(
        foreign,
        "this is no database, whatever its name says; it is long enough to have a header of one hundred bytes ......");
    const CliResult refused = s_cli->run({u"sql"_s, foreign, u"SELECT 1"_s});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.error.contains(u"error 1032: Could not connect to database.\n\n[3343]"_s))
        << qPrintable(refused.error);
    EXPECT_TRUE(support::readFile(foreign).startsWith("this is no database"));
}

TEST_F(EndToEndTest, ADryRunTellsWhatTheRunDoesFileByFile)
{
    const QDir foreign(QDir(s_project).filePath(u"foreign"_s));
    const QStringList names = foreign.entryList({u"*.txt"_s}, QDir::Files);
    const QString copied = s_folder->filePath(u"00777_primary.txt"_s);
    QFile::copy(foreign.filePath(names.first()), copied);
    const auto outcomes = [](const QStringList &command, const QStringList &files, bool isDry) {
        QStringList arguments = command + files + QStringList{u"--yes"_s, u"--format"_s, u"json"_s};
        if (isDry)
            arguments.append(u"--dry-run"_s);
        const CliResult result = s_cli->run(arguments);
        EXPECT_EQ(result.status, 1) << "one file cannot be read";
        return result.json()[u"files"].toArray();
    };
    const auto numbers = [](const QJsonArray &files) {
        QStringList texts;
        for (const QJsonValue &file : files)
            texts.append(
                u"%1/%2/%3"_s.arg(file[u"entries"].toInt()).arg(file[u"stored"].toInt()).arg(file[u"skipped"].toInt()));
        return texts.join(u' ');
    };
    const QStringList convert{u"convert"_s, s_project};
    const QJsonArray checked = outcomes(convert, {s_folder->path(), copied}, true);
    const QString report = QDir(s_project).filePath(u"reports/00777_PRI.rep"_s);
    EXPECT_FALSE(QFile::exists(report));
    EXPECT_EQ(checked[0][u"problems"][0][u"kind"].toString(), u"cannot be read");
    EXPECT_EQ(numbers(outcomes(convert, {s_folder->path(), copied}, false)), numbers(checked));
    EXPECT_TRUE(QFile::exists(report)) << "the other text is converted all the same";

    const QJsonArray uploads = outcomes({u"upload"_s, s_project}, {report, copied}, true);
    EXPECT_EQ(uploads[1][u"problems"][0][u"kind"].toString(), u"cannot be read");
    EXPECT_EQ(numbers({uploads[0]}), numbers({checked[1]}));
    QFile::remove(report);
}

TEST_F(EndToEndTest, StatementsChangeRowsAndCanTakeParameters)
{
    const QString database = s_folder->filePath(u"new.mdb"_s);
    s_cli->mustRun({u"create"_s, database});
    EXPECT_EQ(s_cli->run({u"create"_s, database}).status, 1); // it exists now

    const auto json = [&](const QStringList &arguments) {
        return s_cli->mustRun(QStringList{u"sql"_s, database} + arguments + QStringList{u"--format"_s, u"json"_s})
            .json();
    };
    EXPECT_EQ(json({u"INSERT INTO tube_sets (name) VALUES ('A')"_s})[u"affected"].toInt(), 1);
    EXPECT_EQ(json({u"SELECT name FROM tube_sets WHERE name = [which]"_s, u"--param"_s, u"which=a"_s})[u"rows"]
                  .toArray()
                  .size(),
              1);

    const CliResult unset = s_cli->run({u"sql"_s, database, u"SELECT name FROM tube_sets WHERE name = [which]"_s});
    EXPECT_EQ(unset.status, 1);
    EXPECT_TRUE(unset.error.contains(u"which"_s)) << qPrintable(unset.error);
    const CliResult slip = s_cli->run({u"sql"_s, database, u"SELECT nmae FROM tube_sets"_s});
    EXPECT_TRUE(slip.error.contains(u"[nmae] (perhaps a slip of name)"_s)) << qPrintable(slip.error);
    const CliResult wrong =
        s_cli->run({u"sql"_s, database, u"SELECT * FROM tubes WHERE row = [which]"_s, u"--param"_s, u"which=abc"_s});
    EXPECT_TRUE(wrong.error.contains(u"[which] (\"abc\" is no value of type Integer)"_s)) << qPrintable(wrong.error);

    // A file of statements goes in whole or not at all.
    const QString script = s_folder->filePath(u"script.sql"_s);
    support::writeFile(script,
                       "INSERT INTO tube_sets (name)\nVALUES ('B;');\nINSERT INTO tube_sets (name) VALUES ('A');\n");
    EXPECT_EQ(s_cli->run({u"sql"_s, database, u"--file"_s, script}).status, 1);
    EXPECT_EQ(json({u"SELECT COUNT(*) FROM tube_sets"_s})[u"rows"][0][0].toInt(), 1);

    // Clauses before a statement end with a semicolon too.
    support::writeFile(script, "PARAMETERS\n[n] Text;\nDELETE FROM tube_sets WHERE name = [n];\n"
                               "PROCEDURE p [n] Text;\nINSERT INTO tube_sets (name) VALUES ([n]);\n");
    s_cli->mustRun({u"sql"_s, database, u"--file"_s, script, u"--param"_s, u"n=C"_s});
    EXPECT_EQ(json({u"SELECT name FROM tube_sets WHERE name = 'C'"_s})[u"rows"].toArray().size(), 1);

    support::writeFile(script, "INSERT INTO tube_sets (name) VALUES ('M\xfcll');\n");
    const CliResult latin = s_cli->run({u"sql"_s, database, u"--file"_s, script});
    EXPECT_EQ(latin.status, 1);
    EXPECT_TRUE(latin.error.contains(u"is not text in UTF-8"_s)) << qPrintable(latin.error);
}

TEST_F(EndToEndTest, SchemaAndExplanation)
{
    const QString database = s_folder->filePath(u"schema.mdb"_s);
    s_cli->mustRun({u"create"_s, database});
    const QJsonObject schema = s_cli->mustRun({u"schema"_s, database, u"--format"_s, u"json"_s}).json();
    EXPECT_EQ(schema[u"tables"].toArray().size(), 12);
    EXPECT_FALSE(schema[u"relations"].toArray().isEmpty());
    EXPECT_TRUE(s_cli->mustRun({u"schema"_s, database, u"report"_s}).output.contains(u">= 0 and <= 999"_s));
    EXPECT_EQ(s_cli->run({u"schema"_s, database, u"nowhere"_s}).status, 1);

    const QString statement = u"SELECT cal_num FROM report WHERE defect = [code]"_s;
    const CliResult text = s_cli->mustRun({u"explain"_s, database, statement});
    for (const QString &part : {u"Rows can be changed: yes"_s, u"code"_s, u"report.cal_num"_s, u"SEARCH"_s})
        EXPECT_TRUE(text.output.contains(part)) << qPrintable(part + u'\n' + text.output);
    EXPECT_FALSE(s_cli->mustRun({u"explain"_s, database, u"SELECT row INTO copy FROM report"_s})
                     .output.contains(u"Changeable"_s));
    const QJsonObject told = s_cli->mustRun({u"explain"_s, database, statement, u"--format"_s, u"json"_s}).json();
    EXPECT_EQ(told[u"parameters"][0][u"type"].toString(), u"Text"_s);
    EXPECT_TRUE(told[u"words"][0].toString().startsWith(u"Finds rows of table \"report\" by its index "_s));
}

TEST_F(EndToEndTest, FillsAreStoredInAMapAndPainted)
{
    const QString map = s_project + u"/maps/plan.map"_s;
    const auto fill = [&](const QStringList &arguments) {
        return s_cli->mustRun(QStringList{u"fill"_s, s_project} + arguments + QStringList{u"--map"_s, map}).output;
    };
    const QString first = fill({u"random"_s, u"--percent"_s, u"20"_s, u"--seed"_s, u"5"_s, u"--colour"_s, u"0072B2"_s});
    EXPECT_TRUE(first.startsWith(u"A  RANDOM     20% Fill"_s)) << qPrintable(first);
    const QString second = fill({u"pattern"_s, u"--row-inc"_s, u"3"_s, u"--tubes"_s, u"open"_s, u"--tubes"_s,
                                 s_folder->filePath(u"new.csv"_s)});
    const QString third = fill({u"box"_s, u"--select"_s, u"5 8"_s, u"--radius"_s, u"2.5"_s, u"--symbol"_s, u"*"_s});
    EXPECT_TRUE(third.contains(u"\n*  BOX  "_s)) << qPrintable(third);
    EXPECT_EQ(third.count(u'\n'), 3);

    // Tubes as text: as many lines as the legend counts, and no picture unless one is asked for.
    const auto lines = [](const QString &name) {
        QFile file(s_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
    };
    const QString pattern = second.section(u'\n', 1, 1).simplified();
    EXPECT_EQ(lines(u"new.csv"_s).size() - 2, pattern.section(u' ', -2, -2).remove(u',').toInt())
        << qPrintable(pattern);
    s_cli->mustRun({u"map"_s, s_project, u"--map"_s, map, u"--tubes"_s, s_folder->filePath(u"all.csv"_s)});
    int hits = 0;
    for (const QString &line : third.split(u'\n', Qt::SkipEmptyParts))
        hits += line.simplified().section(u' ', -1).toInt();
    EXPECT_EQ(lines(u"all.csv"_s).size() - 2, hits);
    EXPECT_TRUE(lines(u"all.csv"_s)[0].endsWith("ROW,COL,SYMBOL,TYPE,DESCRIPTION\r"));

    // The same seed on another map gives the same sample.
    const QString again = s_project + u"/maps/again.map"_s;
    const CliResult same = s_cli->mustRun({u"fill"_s, s_project, u"random"_s, u"--percent"_s, u"20"_s, u"--seed"_s,
                                           u"5"_s, u"--colour"_s, u"0072B2"_s, u"--map"_s, again});
    EXPECT_EQ(same.output, first);

    // The map's name as the suite writes it will do, too.
    const QString out = s_folder->filePath(u"plan.emf"_s);
    EXPECT_EQ(s_cli->mustRun({u"map"_s, s_project, u"--map"_s, u"maps\\plan.map"_s, u"--out"_s, out}).output, third);
    EXPECT_TRUE(support::readFile(out).startsWith(QByteArray("\x01\x00\x00\x00", 4)));

    QFile damaged(map);
    ASSERT_TRUE(damaged.open(QIODevice::ReadWrite) && damaged.resize(damaged.size() - 3));
    damaged.close();
    const CliResult refused = s_cli->run({u"fill"_s, s_project, u"box"_s, u"--map"_s, map});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.error.contains(u"[1039]"_s) || refused.error.contains(u"Could not read map file."_s));
    for (const QStringList &wrong : QList<QStringList>{{u"spiral"_s},
                                                       {u"random"_s, u"--percent"_s, u"101"_s},
                                                       {u"random"_s, u"--percent"_s, u"1"_s, u"--count"_s, u"1"_s},
                                                       {u"box"_s, u"--radius"_s, u"-1"_s},
                                                       {u"pattern"_s, u"--region"_s, u"moon"_s}})
        EXPECT_EQ(s_cli->run(QStringList{u"fill"_s, s_project} + wrong + QStringList{u"--map"_s, again}).status, 2)
            << qPrintable(wrong.join(u' '));
}

// The one rule for names of files: the current folder, or with a backslash the project's, whatever exists where.
TEST_F(EndToEndTest, FilesAreNamedFromTheCurrentFolderOrAsTheSuiteDoes)
{
    s_cli->mustRun({u"fill"_s, s_project, u"random"_s, u"--map"_s, u"maps\\of the suite.map"_s});
    EXPECT_TRUE(QFile::exists(s_project + u"/maps/of the suite.map"_s));
    CliProcess here;
    here.setFolder(s_folder->path());
    here.mustRun({u"fill"_s, s_project, u"random"_s, u"--map"_s, u"of the suite.map"_s});
    EXPECT_TRUE(QFile::exists(s_folder->filePath(u"of the suite.map"_s)));
    here.mustRun({u"map"_s, s_project, u"--map"_s, u"of the suite.map"_s, u"--out"_s, u"temp\\a.png"_s, u"--query"_s,
                  u"queries\\plugged.qry"_s, u"--database"_s, u"arvo\\project.mdb"_s});
    EXPECT_TRUE(QFile::exists(s_project + u"/temp/a.png"_s));
    EXPECT_EQ(here.run({u"map"_s, s_project, u"--map"_s, u"maps/of the suite.map"_s, u"--out"_s, u"a.png"_s}).status, 1)
        << "the project has it, the current folder does not";
    EXPECT_EQ(here.run({u"fill"_s, s_project, u"random"_s, u"--map"_s, u"nowhere\\a.map"_s}).status, 1);
}

TEST_F(EndToEndTest, PaperIsTheLocalesOrTheOneNamed)
{
    const QString out = s_folder->filePath(u"paper.pdf"_s);
    const auto mediaBox = [&](const QString &locale, const QStringList &options) {
        CliProcess cli;
        cli.setVariable(u"LC_ALL"_s, locale);
        cli.mustRun(QStringList{u"map"_s, s_project, u"--out"_s, out} + options);
        const QByteArray bytes = support::readFile(out);
        // Texts of a PDF's properties are UTF-16 with the higher byte first.
        for (const QByteArray &name : {QByteArray("\0S\0i\0t\0e\0 \0001", 12), QByteArray("\0A\0R\0V\0O", 8)})
            EXPECT_TRUE(bytes.contains(name)) << name.constData() + 1;
        const qsizetype at = bytes.indexOf("/MediaBox [");
        return bytes.mid(at, bytes.indexOf(']', at) - at + 1).replace(".000000", "").toStdString();
    };
    EXPECT_EQ(mediaBox(u"en_US.UTF-8"_s, {}), "/MediaBox [0 0 792 612]");
    EXPECT_EQ(mediaBox(u"de_DE.UTF-8"_s, {}), "/MediaBox [0 0 842 595]");
    EXPECT_EQ(mediaBox(u"C"_s, {u"--paper"_s, u"a3"_s}), "/MediaBox [0 0 1191 842]");
    EXPECT_EQ(s_cli->run({u"map"_s, s_project, u"--out"_s, out, u"--paper"_s, u"B17"_s}).status, 2);
}

// Thousands of failures of one kind are summed up, on the screen and in the log.
TEST_F(EndToEndTest, ABatchThatFailsPrintsASummary)
{
    const QStringList reports = filesIn(s_project + u"/reports"_s, u"R10_*.rep"_s);
    const QString database = s_folder->filePath(u"strict.mdb"_s);
    const CliProcess cli;
    cli.mustRun({u"create"_s, database});
    cli.mustRun({u"sql"_s, database, u"ALTER TABLE report ADD CONSTRAINT none CHECK (row > 999)"_s});
    const CliResult upload =
        cli.run(QStringList{u"upload"_s, s_project, u"--database"_s, database, u"--yes"_s} + reports);
    EXPECT_EQ(upload.status, 1);
    EXPECT_LT(upload.error.count(u'\n'), 120) << qPrintable(upload.error.left(2000));
    EXPECT_TRUE(upload.error.contains(u"more like this, not printed"_s)) << qPrintable(upload.error.left(2000));
    EXPECT_TRUE(upload.error.contains(u": not stored: entries 3-"_s)) << qPrintable(upload.error.left(2000));
    const QString entries = QString::fromUtf8(support::readFile(cli.installation() + u"/state/arvo/failures.log"_s));
    EXPECT_TRUE(entries.contains(u"Could not upload report entry.\n    ["_s)) << qPrintable(entries.left(500));
    EXPECT_LT(entries.size(), 10'000);
}

TEST_F(EndToEndTest, AMapOfAnotherModelIsReplacedOnlyWhenToldTo)
{
    const QString other = s_folder->filePath(u"other project"_s);
    s_cli->mustRun({u"demo"_s, other, u"--kind"_s, u"once-through"_s, u"--tubes"_s, u"400"_s, u"--entries"_s, u"10"_s,
                    u"--outages"_s, u"1"_s});
    const QString map = s_folder->filePath(u"foreign.map"_s);
    s_cli->mustRun({u"fill"_s, other, u"random"_s, u"--map"_s, map});
    const auto content = [&map] { return support::readFile(map); };
    const QByteArray before = content();
    const QStringList box{u"fill"_s, s_project, u"box"_s, u"--map"_s, map};
    const CliResult refused = s_cli->run(box);
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.error.startsWith(u"error 1041: "_s)) << qPrintable(refused.error);
    EXPECT_EQ(content(), before);
    s_cli->mustRun(box + QStringList{u"--yes"_s});
    EXPECT_NE(content(), before);
    EXPECT_EQ(s_cli->mustRun(box).error, QString()) << "it is of this model now";
}

TEST_F(EndToEndTest, DamagedOptionsAreSaidAndDefaultsHold)
{
    const CliProcess cli;
    ASSERT_TRUE(QDir(cli.installation()).mkpath(u"config/arvo"_s));
    support::writeFile(cli.installation() + u"/config/arvo/arvo.opt"_s, "no options");
    const QString out = s_folder->filePath(u"defaults.jpg"_s);
    const CliResult painted = cli.mustRun({u"map"_s, s_project, u"--out"_s, out});
    EXPECT_TRUE(painted.error.startsWith(u"error: Could not read the options.\n\n"_s)) << qPrintable(painted.error);
    EXPECT_FALSE(QImage(out).isNull());
}

TEST_F(EndToEndTest, WrongUsageIsStatusTwo)
{
    for (const QStringList &arguments : {QStringList{},
                                         {u"fly"_s},
                                         {u"sql"_s},
                                         {u"sql"_s, s_project, u"SELECT 1"_s, u"--format"_s, u"xml"_s},
                                         {u"map"_s, s_project, u"--colour"_s},
                                         {u"demo"_s, s_project + u"2"_s, u"--tubes"_s, u"many"_s}})
        EXPECT_EQ(s_cli->run(arguments).status, 2) << qPrintable(arguments.join(u' '));
    EXPECT_EQ(s_cli->run({u"help"_s, u"upload"_s}).status, 0);
}

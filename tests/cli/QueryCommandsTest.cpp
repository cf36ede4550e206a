#include "PlantTest.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

// Stored queries and the files around them, through the real program.
class QueryCommandsTest : public PlantTest
{
protected:
    QueryCommandsTest() { uploadComponent(); }
};

} // namespace

TEST_F(QueryCommandsTest, AStoredQueryRunsByNameAndComesBack)
{
    const QString first = file(u"first.sql"_s, "SELECT row, col FROM tubes WHERE row = [which] ORDER BY col");
    const QString second = file(u"second.sql"_s, "SELECT Count(*) AS n FROM tubes");
    EXPECT_EQ(cli.mustRun({u"store-query"_s, project, u"tubes of a row"_s, first}).output,
              u"Stored ARVO query \"tubes of a row\".\n"_s);
    const QString listed = cli.mustRun({u"queries"_s, project}).output;
    EXPECT_TRUE(listed.contains(u"tubes of a row  select  [which] Integer"_s)) << qPrintable(listed);
    const QJsonObject entry =
        cli.mustRun({u"queries"_s, project, u"--format"_s, u"json"_s}).json()[u"queries"].toArray().at(0).toObject();
    EXPECT_EQ(entry[u"kind"].toString(), u"select"_s);

    const QStringList run{u"query"_s, project, u"Tubes of a row"_s, u"--param"_s, u"which=2"_s};
    EXPECT_TRUE(cli.mustRun(run + QStringList{u"--format"_s, u"csv"_s}).output.startsWith(u"row,col\r\n2,"_s));
    EXPECT_EQ(cli.mustRun(run + QStringList{u"--format"_s, u"json"_s}).json()[u"columns"].toArray().size(), 2);

    EXPECT_EQ(cli.run({u"store-query"_s, project, u"tubes of a row"_s, second}).status, 1) << "not without --yes";
    cli.mustRun({u"store-query"_s, project, u"tubes of a row"_s, second, u"--yes"_s});
    EXPECT_TRUE(
        cli.mustRun({u"queries"_s, project, u"--versions"_s, u"tubes of a row"_s}).output.contains(u"[which]"_s));
    EXPECT_EQ(cli.mustRun({u"delete-query"_s, project, u"tubes of a row"_s}).output,
              u"Deleted query \"tubes of a row\" from the database.\n"_s);
    EXPECT_EQ(cli.run(run).status, 1);
    cli.mustRun({u"store-query"_s, project, u"tubes of a row"_s, u"--version"_s, u"2"_s});
    cli.mustRun(run);
}

TEST_F(QueryCommandsTest, RowsGoToFilesOfEveryKind)
{
    const QString name = file(u"cross.qry"_s, "PARAMETERS least Long; TRANSFORM Count(*) SELECT row FROM tubes "
                                              "WHERE row >= least AND row < least + 2 GROUP BY row PIVOT is_periph");
    for (const auto &[out, lead] :
         {std::pair(u"o.txt"_s, QByteArray("|")), std::pair(u"o.csv"_s, QByteArray("row,")),
          std::pair(u"o.xlsx"_s, QByteArray("PK\x03\x04")), std::pair(u"o.pdf"_s, QByteArray("%PDF"))}) {
        file(out, "an older file");
        EXPECT_EQ(cli.mustRun({u"query"_s, project, name, u"--param"_s, u"least=2"_s, u"--out"_s, folder.filePath(out)})
                      .output,
                  u"2 Entries\n"_s);
        EXPECT_TRUE(support::readFile(folder.filePath(out)).startsWith(lead)) << qPrintable(out);
    }
    const QString change = file(u"change.qry"_s, "DELETE FROM tubes");
    EXPECT_EQ(cli.run({u"query"_s, project, change, u"--out"_s, folder.filePath(u"p.csv"_s)}).status, 1);
    EXPECT_NE(cli.mustRun({u"sql"_s, project, u"SELECT row FROM tubes"_s}).output, u"(0 rows)\n"_s);
}

TEST_F(QueryCommandsTest, ACrossTableWithParametersIsReadAndExecuted)
{
    cli.mustRun(
        {u"store-query"_s, project, u"Cross"_s,
         file(u"cross.sql"_s, "PARAMETERS least Long; TRANSFORM Count(*) SELECT row FROM tubes WHERE row >= least "
                              "AND row < least + 2 GROUP BY row PIVOT 'R' & row")});
    cli.mustRun({u"store-query"_s, project, u"Reader"_s,
                 file(u"reader.sql"_s, "SELECT row, more AS more FROM Cross WHERE R2 > 0")});
    const QStringList run{u"query"_s, project, u"Reader"_s, u"--format"_s, u"csv"_s, u"--param"_s, u"least=2"_s};
    EXPECT_TRUE(cli.run(run).error.contains(u"No value for [more];"_s)) << "known when the columns are";
    EXPECT_EQ(cli.mustRun(run + QStringList{u"--param"_s, u"more=x"_s}).output, u"row,more\r\n2,x\r\n"_s);
    EXPECT_TRUE(cli.mustRun({u"sql"_s, project, u"EXECUTE Cross 3"_s, u"--format"_s, u"csv"_s})
                    .output.startsWith(u"row,R3,R4\r\n3,"_s));
}

TEST_F(QueryCommandsTest, WrongInputIsRefusedWithItsReason)
{
    const QString select = file(u"a.sql"_s, "SELECT row FROM tubes WHERE row = [which]");
    const QString missing = folder.filePath(u"none.qry"_s);
    cli.mustRun({u"store-query"_s, project, u"q"_s, select});
    struct Case
    {
        QStringList arguments;
        int status;
        QString reason;
    };
    const QList<Case> cases{
        {{u"query"_s, project, u"q"_s}, 1, u"No value for [which]"_s},
        {{u"query"_s, project, u"q"_s, u"--param"_s, u"which=x"_s}, 1, u"no value of type Integer"_s},
        {{u"query"_s, project, u"none"_s}, 1, u"error 1074: Could not fetch query."_s},
        {{u"query"_s, project, missing}, 1, u"error 1070: Could not read query file."_s},
        {{u"query"_s, project, u"q"_s, u"--format"_s, u"xml"_s}, 2, u"--format is table, csv or json."_s},
        {{u"query"_s, project, u"q"_s, u"--out"_s, u"o.doc"_s}, 2, u"--out needs a name that ends in"_s},
        {{u"query"_s, project, u"q"_s, u"--out"_s, u"gone/o.csv"_s}, 1, u"does not exist"_s},
        {{u"query"_s, project}, 2, u"NAME or FILE.qry is missing."_s},
        {{u"store-query"_s, project, u"q#"_s, select}, 1, u"error 1072: Will not overwrite view!"_s},
        {{u"store-query"_s, project, u"p"_s, file(u"b.sql"_s, "SELEKT 1")}, 1, u"error 1073: Could not store"_s},
        {{u"store-query"_s, project, u"p"_s, missing}, 1, u"error 1070"_s},
        {{u"store-query"_s, project, u"x"_s.repeated(31), select}, 2, u"1 to 30 characters"_s},
        {{u"store-query"_s, project, u"q"_s, u"--version"_s, u"2"_s}, 1, u"There are 0 versions"_s},
        {{u"delete-query"_s, project, u"none"_s}, 1, u"error 1075: Could not delete query."_s},
        {{u"tube"_s, project, u"999"_s, u"2"_s}, 1, u"There is no tube"_s},
        {{u"tube"_s, project, u"70000"_s, u"2"_s}, 1, u"There is no row \"70000\"."_s},
        {{u"formats"_s, project, u"--import"_s, select}, 1, u"this is not a record file"_s},
    };
    for (const Case &wrong : cases) {
        const CliResult result = cli.run(wrong.arguments);
        EXPECT_EQ(result.status, wrong.status) << qPrintable(wrong.arguments.join(u' '));
        EXPECT_TRUE(result.error.contains(wrong.reason)) << qPrintable(wrong.arguments.join(u' ') + result.error);
    }
}

TEST_F(QueryCommandsTest, TubesAndFormatsAreListed)
{
    const QString tube = cli.mustRun({u"tube"_s, project, u"2"_s, u"2"_s}).output;
    EXPECT_TRUE(tube.startsWith(u"Tube - ROW 2 COL 2\n\nReport\n"_s)) << qPrintable(tube);

    const QString exported = folder.filePath(u"formats.opt"_s);
    cli.mustRun({u"formats"_s, project, u"--export"_s, exported});
    EXPECT_EQ(cli.mustRun({u"formats"_s, project, u"--import"_s, exported}).output, u"Stored formats.\n"_s);
    EXPECT_TRUE(cli.mustRun({u"formats"_s, project}).output.contains(u"report"_s));
}

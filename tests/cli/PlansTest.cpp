#include "PlantTest.h"

using namespace Qt::StringLiterals;

namespace {

class PlanCommandsTest : public PlantTest
{
protected:
    QString read(const QString &name) const { return QString::fromUtf8(support::readFile(folder.filePath(name))); }
    QString cells(const QStringList &command) const
    {
        QStringList lines;
        for (const QJsonValue &row :
             cli.mustRun(command + QStringList{u"--format"_s, u"json"_s}).json()[u"rows"].toArray()) {
            QStringList texts;
            for (const QJsonValue &cell : row.toArray())
                texts.append(cell.toVariant().toString());
            lines.append(texts.join(u' '));
        }
        return lines.join(u", "_s);
    }
};

} // namespace

TEST_F(PlanCommandsTest, PlansAreUploadedCheckedAndDeleted)
{
    const QString plan = file(u"p.pln"_s, "!name\tA\nrow\tcol\tacquired\n2\t3\t1\n2\t4\t0\n2\t5\t0\n");
    const QStringList upload{u"upload-plan"_s, project, plan};
    EXPECT_TRUE(cli.mustRun(upload).output.startsWith(u"Successfully uploaded \"A\" in "_s));
    EXPECT_EQ(cli.run(upload).status, 1) << "nobody answered whether to replace it";
    cli.mustRun(upload + QStringList{u"--yes"_s});
    cli.mustRun(upload + QStringList{u"--name"_s, u"B"_s});
    EXPECT_EQ(cli.run(upload + QStringList{u"--name"_s, u"B"_s, u"--yes"_s}).status, 1);
    EXPECT_TRUE(cells({u"plans"_s, project}).startsWith(u"B 3 1 "_s)) << "the replacing upload deletes A";

    cli.mustRun({u"sql"_s, project, u"DELETE FROM report"_s});
    const auto insert = [&](const QString &col, const QString &defect) {
        cli.mustRun({u"sql"_s, project,
                     u"INSERT INTO report (sec, row, col, defect, outage, site_code, comp, cal_num, oper_type, "
                     "analyst_id, oper_id, entry_time, chan, loc_land) VALUES (0, 2, %1, '%2', 'R10', 'S', 'C', 1, "
                     "'PRI', 'A', 'O', #1/1/2020#, 'P1', 'x')"_s.arg(col, defect)});
    };
    insert(u"4"_s, u"NDD"_s);
    insert(u"5"_s, u"INC"_s);
    EXPECT_EQ(cells({u"plan"_s, project, u"B"_s, u"--check"_s}), u"1 0 2 3 1 0, 2 0 2 4 0 1, 3 0 2 5 0 1");
    cli.mustRun({u"plan"_s, project, plan, u"--check"_s, u"--incomplete"_s, u"INC,X"_s, u"--out"_s,
                 folder.filePath(u"out.csv"_s)});
    EXPECT_EQ(read(u"out.csv"_s), u"entry,sec,row,col,acquired,analyzed\n1,0,2,3,1,0\n2,0,2,4,0,1\n3,0,2,5,0,0\n");
    cli.mustRun({u"delete-plan"_s, project, u"B"_s});
    EXPECT_EQ(cli.run({u"delete-plan"_s, project, u"B"_s, u"--yes"_s}).status, 1);
    EXPECT_EQ(cli.run({u"plan"_s, project, u"B"_s}).status, 1);
}

TEST_F(PlanCommandsTest, ListsAndTubeSets)
{
    const QString list = file(u"t.lst"_s, "! why\n  7 2 3\n  x 2 4\n  8 99 9\n");
    const QJsonObject parsed = cli.mustRun({u"parse-list"_s, project, list}).json();
    EXPECT_EQ(parsed[u"errors"].toInt(), 1);
    EXPECT_EQ(parsed[u"notes"].toString(), u"why\n");
    const QJsonArray lines = parsed[u"lines"].toArray();
    EXPECT_EQ(lines[1][u"entry"].toInt(), 7);
    EXPECT_EQ(lines[2][u"entry"].toInt(), 0) << "a word that is no number";
    EXPECT_TRUE(lines[3][u"tube"].isNull());
    EXPECT_TRUE(lines[0][u"comment"].toBool());

    const CliResult stored = cli.mustRun({u"upload-tube-set"_s, project, list, u"--name"_s, u"S"_s});
    EXPECT_TRUE(stored.error.contains(u"line 4 of the list: tube \"8 99 9\" does not exist"_s));
    EXPECT_EQ(cells({u"tube-sets"_s, project}), u"S 2 why\n");
    cli.mustRun({u"tube-set"_s, project, u"S"_s, u"--out"_s, folder.filePath(u"s.lst"_s)});
    EXPECT_TRUE(read(u"s.lst"_s).endsWith(u"! why\n# ENTRY  ROW  COL\n      0    2    4\n      7    2    3\n"_s))
        << qPrintable(read(u"s.lst"_s));
    for (const QString &source : {u"S"_s, list}) {
        const QString map = folder.filePath(u"m.map"_s);
        EXPECT_TRUE(cli.mustRun({u"fill"_s, project, u"list"_s, source, u"--map"_s, map}).output.contains(u"LIST"_s));
    }
    cli.mustRun({u"delete-tube-set"_s, project, u"S"_s, u"--yes"_s});
    EXPECT_EQ(cells({u"tube-sets"_s, project}), u"");
}

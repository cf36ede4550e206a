#include "PlantTest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class RepairCommandsTest : public PlantTest
{
protected:
    RepairCommandsTest()
    {
        uploadComponent();
        cli.mustRun({u"sql"_s, project, u"DELETE FROM repairs"_s});
    }
    QString list(const QByteArray &lines) const { return file(u"tubes.lst"_s, lines); }
    /// "row col type vendor", the repairs in a view.
    QString repairs(const QStringList &options = {}) const
    {
        QStringList lines;
        const QJsonArray rows = cli.mustRun(QStringList{u"repairs"_s, project, u"--format"_s, u"json"_s} + options)
                                    .json()[u"rows"]
                                    .toArray();
        for (const QJsonValue &row : rows)
            lines.append(
                u"%1 %2 %3 %4"_s.arg(row[1].toInt()).arg(row[2].toInt()).arg(row[3].toString(), row[6].toString()));
        return lines.join(u", "_s);
    }
};

} // namespace

TEST_F(RepairCommandsTest, ScheduleListAndComplete)
{
    const QString tubes = list("# ENTRY ROW COL\n! note\n  0 2 3\n  1 2 4\n  2 999 3\n  3 2 3\n");
    const QStringList schedule{u"schedule-repairs"_s, project, u"--tubes"_s, tubes, u"--type"_s, u"Plug"_s};
    const CliResult added = cli.mustRun(schedule + QStringList{u"--set"_s, u"vendor=V & Co"_s});
    EXPECT_EQ(added.output, u"Added 2 new repairs.\n");
    EXPECT_TRUE(added.error.contains(u"line 5 of the list: tube \"2 999 3\" does not exist"_s))
        << qPrintable(added.error);
    EXPECT_EQ(repairs(), u"2 3 Plug V & Co, 2 4 Plug V & Co");
    EXPECT_TRUE(cli.mustRun(schedule).error.contains(u"There are 2 duplicate repairs."_s));
    cli.mustRun({u"sql"_s, project, u"DELETE FROM repairs WHERE vendor = ''"_s});

    QStringList complete{u"complete-repairs"_s,  project,     u"--tubes"_s,
                         list("0 2 4\n1 2 5\n"), u"--date"_s, u"2024-02-03"_s};
    EXPECT_EQ(cli.mustRun(complete + QStringList{u"--type"_s, u"Sleeve"_s}).output, u"Completed 0 repairs.\n");
    const CliResult done = cli.mustRun(complete);
    EXPECT_EQ(done.output, u"Completed 1 repairs.\n");
    EXPECT_TRUE(done.error.contains(u"COL 5 has no scheduled repair"_s)) << qPrintable(done.error);
    EXPECT_EQ(repairs({u"--view"_s, u"completed"_s}), u"2 4 Plug V & Co");
    EXPECT_EQ(repairs({u"--view"_s, u"scheduled"_s, u"--type"_s, u"plug"_s}), u"2 3 Plug V & Co");
    EXPECT_EQ(repairs({u"--view"_s, u"need-heat"_s, u"--outage"_s, u"none"_s}), u"");

    const QString query =
        file(u"some.qry"_s,
             "SELECT row, col, sec FROM tubes WHERE row = 2 AND col = 3 UNION ALL SELECT 2, 99, 0 FROM row_alias "
             "WHERE index = 1");
    const CliResult byQuery =
        cli.mustRun({u"schedule-repairs"_s, project, u"--query"_s, query, u"--type"_s, u"Sleeve"_s});
    EXPECT_EQ(byQuery.output, u"Added 1 new repairs.\n");
    EXPECT_TRUE(byQuery.error.contains(u"\"row=2 col=99 sec=0\" does not exist"_s)) << qPrintable(byQuery.error);

    complete.last() = u"2024-02-30"_s;
    EXPECT_EQ(cli.run(complete).status, 2);
    for (const QString &wrong : {u"row=3"_s, u"vendr=x"_s, u"repair_type="_s, u"length=x"_s, u"date_scheduled="_s,
                                 QString(u"heat1="_s + QString(51, u'x'))})
        EXPECT_EQ(cli.run(schedule + QStringList{u"--set"_s, wrong}).status, 2) << qPrintable(wrong);
    EXPECT_EQ(cli.run({u"schedule-repairs"_s, project, u"--type"_s, u"Plug"_s}).status, 2);
    EXPECT_EQ(repairs().count(u"Plug"_s), 2);
}

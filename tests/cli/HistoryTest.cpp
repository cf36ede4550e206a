#include "PlantTest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

class HistoryCommandTest : public PlantTest
{
protected:
    HistoryCommandTest()
    {
        uploadComponent();
        cli.mustRun({u"sql"_s, project, u"DELETE FROM report"_s});
        add(u"1, 1, '1R10', 'DNT', 2.5, Null"_s);
        add(u"1, 1, '1R12', 'DNT', 0.7, Null"_s);
        add(u"1, 2, '1R10', 'PCT', 1, 25"_s);
    }
    void add(const QString &values)
    {
        cli.mustRun({u"sql"_s, project,
                     u"INSERT INTO report (row, col, outage, defect, volts, pcnt, sec, site_code, comp, leg, cal_num, "
                     u"file_num, oper_type, analyst_id, oper_id, entry_time) VALUES ("_s +
                         values + u", 0, 'S', 'C', 1, 3, 0, 'PRI', 'A', 'A', #1/2/2024#)"_s});
    }
    QString csv(const QStringList &options) const
    {
        return cli.mustRun(QStringList{u"history"_s, project, u"--format"_s, u"csv"_s} + options).output;
    }
};

} // namespace

TEST_F(HistoryCommandTest, PrintsAndStoresTheKeptEntries)
{
    const QString titles = u"sec,row,col,outage,chan,defect,volts,phase,pcnt,loc_land,loc_off,to_land,to_off,cal_num,"
                           u"tube,rank,keep\r\n"_s;
    const QString old = u"0,1,1,1R10,,DNT,2.5,,,,,,,3,0,1,True\r\n"_s;
    const QString late = u"0,1,1,1R12,,DNT,0.7,,,,,,,3,0,0,True\r\n"_s;
    const QString deep = u"0,1,2,1R10,,PCT,1,,25,,,,,3,1,0,True\r\n"_s;
    EXPECT_EQ(csv({}), titles + late + deep);
    EXPECT_EQ(csv({u"--outages"_s, u"1r10"_s}), titles + old + deep);
    EXPECT_EQ(csv({u"--mode"_s, u"all"_s, u"--sort"_s, u"volts"_s}), titles + old + deep + late);
    EXPECT_EQ(csv({u"--mode"_s, u"all"_s, u"--defects"_s, u"DNT:0.7,PCT:-1:26"_s}), titles + late + old);
    EXPECT_EQ(csv({u"--defects"_s, u"PCT"_s, u"--all"_s}).count(u",False"_s), 2);
    const CliResult none = cli.mustRun({u"history"_s, project, u"--outages"_s, u"9R9"_s});
    EXPECT_TRUE(none.error.contains(u"has no outage 9R9"_s)) << qPrintable(none.error);

    const QString file = folder.filePath(u"kept.hst"_s);
    const CliResult stored = cli.mustRun({u"history"_s, project, u"--out"_s, file});
    EXPECT_EQ(stored.output, u"History stored to \"%1\". 2 of 3 entries.\n"_s.arg(file));
    EXPECT_TRUE(QFile::exists(file));

    const QList<QStringList> wrong{{u"--mode"_s, u"x"_s},       {u"--sort"_s, u"x"_s},
                                   {u"--defects"_s, u"A:b"_s},  {u"--defects"_s, u"A:1:2:3"_s},
                                   {u"--out"_s, u"kept.txt"_s}, {u"--format"_s, u"x"_s}};
    for (const QStringList &options : wrong)
        EXPECT_EQ(cli.run(QStringList{u"history"_s, project} + options).status, 2) << qPrintable(options.join(u' '));
}

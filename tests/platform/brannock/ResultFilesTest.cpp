#include <brannock/History.h>
#include <brannock/InspPlan.h>
#include <brannock/Report.h>
#include <brannock/TubeHistory.h>
#include <gmock/gmock.h>
#include <QFile>
#include <QTemporaryDir>
#include <support/FullDisk.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using brannock::History;
using brannock::InspPlan;
using brannock::Report;
using brannock::ReportEntry;
using tarnwick::FileError;
using tarnwick::JDateTime;

namespace {

class ResultFilesTest : public testing::Test
{
protected:
    void put(const QByteArray &content) { tarnwick::writeFileAtomically(path, content); }
    template <typename Load>
    QString error(Load load)
    {
        try {
            load();
        } catch (const FileError &e) {
            return u"%1: %2"_s.arg(e.line()).arg(e.reason());
        }
        return u"no error"_s;
    }
    template <typename Load>
    void expectEveryCutRefused(Load load)
    {
        for (qsizetype size = tarnwick::readFile(path).size() - 1; size >= 0; --size) {
            ASSERT_TRUE(QFile::resize(path, size));
            EXPECT_NE(error(load), u"no error") << size;
        }
    }
    QTemporaryDir dir;
    QString path = dir.filePath(u"file"_s);
};

ReportEntry fullEntry()
{
    ReportEntry e;
    e.outage = u"R12"_s;
    e.site = {u"S1"_s, u"Site"_s, u"1"_s, u"SGA"_s, u"Gen A"_s, u"Model"_s, u"R12"_s};
    e.leg = 0;
    e.calNumber = 65535;
    e.fileNumber = 70000;
    e.id = 3;
    e.sec = 1;
    e.row = 12;
    e.col = 47;
    e.channel = u"P 1"_s;
    e.meas = {u"Vpp"_s, 0.1, 35, 123.456, 41};
    e.entryTime = JDateTime::fromLocal(2019, 3, 31, 12, 34, 56);
    e.defect = u"WAR"_s;
    e.location = {u"AV1"_s, -0.15f, 1234, 512.25f};
    e.from = {u"01H"_s, 1, 2, 3};
    e.to = {u"02H"_s, -1, 5, 6};
    e.beginTest = u"TEH"_s;
    e.endTest = u"TEC"_s;
    e.probe = {u"BOBBIN"_s, u"MB-720"_s, 720, u"SN\t1"_s};
    e.operType = u"RES"_s;
    e.analystId = u"A1001"_s;
    e.operatorId = u"A1002"_s;
    e.fileName = u"c:\\new\\file"_s;
    e.util1 = u"1"_s;
    e.util2 = u"#2"_s;
    e.plan = u"Plan"_s;
    e.comment = u"two\nlines, größer"_s;
    return e;
}

TEST_F(ResultFilesTest, AFullDiskKeepsTheOldFile)
{
    Report report;
    report.entries = {fullEntry()};
    const std::function<void()> writers[] = {[&] { report.storeReport(path); }, [&] { History().store(path); },
                                             [&] { InspPlan().storePlan(path); }};
    put("old");
    for (const std::function<void()> &write : writers) {
        const support::FullDisk disk(0);
        EXPECT_THAT(error(write).toStdString(), testing::HasSubstr("File too large"));
        EXPECT_EQ(tarnwick::readFile(path), "old");
    }
}

TEST_F(ResultFilesTest, ReportComesBackWhole)
{
    Report report;
    ReportEntry header;
    header.kind = ReportEntry::Kind::Header;
    header.headerText = u"# PROBE:\tX  \""_s;
    header.sec = header.row = header.col = -1;
    ReportEntry standard;
    standard.kind = ReportEntry::Kind::Standard;
    report.entries = {header, fullEntry(), standard, ReportEntry()};
    report.storeReport(path);

    Report again;
    again.loadReport(path);
    ASSERT_EQ(again.numEntry(), 4);
    EXPECT_EQ(again.path, path);
    EXPECT_TRUE(again[0].isHeader());
    EXPECT_EQ(again[0].headerText, header.headerText);
    EXPECT_EQ(again[0].row, -1);
    EXPECT_TRUE(again[2].isStd());
    EXPECT_EQ(again[1], fullEntry());
    EXPECT_TRUE(again[3].entryTime.isNull()) << "an entry without a value must not take it from the one before";
    EXPECT_TRUE(again[3].comment.isEmpty());
    EXPECT_FALSE(again[3].location.isValid());
    EXPECT_TRUE(again.isCounted);
    expectEveryCutRefused([&] { again.loadReport(path); });
}

TEST_F(ResultFilesTest, FailedReportLoadChangesNothing)
{
    Report report;
    report.entries = {fullEntry()};
    report.path = u"before"_s;
    const auto load = [&] { report.loadReport(path); };
    put("kind\trow\tcol\tdefect\nRESULT\t1\t2\tNDD\nRESULT\t1\n");
    EXPECT_EQ(error(load), u"3: The line has 2 columns where at least 4 are needed (column 'col' is missing).");
    put("kind\trow\tcol\tdefect\nRESULT\t1\t\tNDD\n");
    EXPECT_EQ(error(load), u"2: Column 'col': a result needs its tube's number here, the cell is empty.");
    put("kind\trow\tcol\tdefect\nDONE\t1\t1\tNDD\n");
    EXPECT_EQ(error(load), u"2: Column 'kind': 'DONE' is not one of RESULT, HEADER, STANDARD.");
    put("row\tcol\n");
    EXPECT_EQ(error(load), u"1: The heading has no column 'kind'.");
    put("kind\trow\tcol\tdefect\tentry_time\tvolts\nresult\t1\t1\tNDD\tyesterday\t\n");
    EXPECT_EQ(error(load), u"2: Column 'entry_time': 'yesterday' is not a date and time.");
    put("kind\trow\tcol\tdefect\tentry_time\tvolts\nresult\t1\t1\tNDD\t2020-02-31 10:00:00\t\n");
    EXPECT_EQ(error(load), u"2: Column 'entry_time': '2020-02-31 10:00:00' is not a date and time.");
    EXPECT_EQ(report.numEntry(), 1);
    EXPECT_EQ(report.path, u"before");

    put("volts\tdefect\tcol\trow\tmine\tkind\tentry_time\n1.5\tDNT\t2\t1\tx\t\t03/04/2020 10:00\n");
    EXPECT_EQ(error(load), u"no error");
    ASSERT_EQ(report.numEntry(), 1);
    EXPECT_EQ(report[0].meas.volts, 1.5);
    EXPECT_EQ(report[0].leg, 1);
    EXPECT_EQ(report[0].entryTime, JDateTime::fromLocal(2020, 3, 4, 10));
    EXPECT_FALSE(report.isCounted) << "files of the older version are read, and the user told";
}

TEST_F(ResultFilesTest, StoreInModeZeroKeepsAnExistingReport)
{
    put("mine");
    EXPECT_EQ(error([&] { Report().storeReport(path, 0); }), u"0: The file exists already.");
    EXPECT_EQ(tarnwick::readFile(path), "mine");
    Report().storeReport(path, 1);
    Report report;
    report.loadReport(path);
    EXPECT_EQ(report.numEntry(), 0);
}

TEST_F(ResultFilesTest, HistoryComesBackWithItsSite)
{
    History history;
    history.site = fullEntry().site;
    brannock::HistoryEntry e;
    e.sec = 1;
    e.row = 2;
    e.col = 3;
    e.volts = 0.7;
    e.percent = 20;
    e.defect = u"WAR"_s;
    e.outage = u"R10"_s;
    e.entryTime = JDateTime::fromLocal(2016, 4, 5, 6, 7, 8);
    e.location = {u"AV2"_s, 0.5f, 0, 0};
    e.to = {u"AV3"_s, -0.5f, 9, 0};
    history.entries = {e, brannock::HistoryEntry()};
    history.store(path);
    History again;
    again.load(path);
    EXPECT_EQ(again.site, history.site);
    ASSERT_EQ(again.entries.size(), 2);
    EXPECT_EQ(again.entries[0].col, 3);
    EXPECT_EQ(again.entries[0].volts, 0.7);
    EXPECT_EQ(again.entries[0].percent, 20);
    EXPECT_EQ(again.entries[0].location, e.location);
    EXPECT_EQ(again.entries[0].to, e.to);
    EXPECT_EQ(again.entries[0].entryTime, e.entryTime);
    EXPECT_TRUE(again.entries[1].defect.isEmpty());
    expectEveryCutRefused([&] { again.load(path); });

    put("row\tcol\toutage\n1\t1\tR10\n");
    EXPECT_THROW(again.load(path), FileError);
    EXPECT_EQ(again.entries.size(), 2);
}

TEST_F(ResultFilesTest, LastIndicationsOfATubeWithTheirGrowth)
{
    const auto put3 = [&](const char *rows) {
        put(QByteArray("sec\trow\tcol\toutage\tdefect\tvolts\tpcnt\tloc_land\tloc_off\n") + rows);
    };
    put3("0\t1\t1\tR10\twar\t1.0\t20\tAV2\t0.4\n"
         "0\t1\t1\tR10\tWAR\t9.0\t\tAV2\t1.0\n"
         "0\t1\t1\tR9\tWAR\t1\t1\tAV3\t0.5\n"
         "0\t1\t2\tR12\tNDD\n"
         "0\t1\t1\tR12\tWAR\t1.3\t25\tAV2\t0.5\n"
         "0\t1\t1\tR12\tDNT\t5\t\tAV2\t0.5\n"
         "0\t1\t1\tR12\tWAR\t2\t30\tAV2\t9\n");
    brannock::TubeHistory history;
    history.refresh(path);
    EXPECT_EQ(history.latestLines({0, 1, 2}, 4), QStringList{u"R12 NDD"_s});
    EXPECT_EQ(history.latestLines({0, 1, 1}, 2).join(u'|'), u"R9 WAR 1.00 V 1% AV3 +0.50") << "outages compare as text";
    QStringList all;
    for (const brannock::TubeIndication &indication : history.indications({0, 1, 1}))
        all.append(indication.text());
    EXPECT_EQ(all.mid(1).join(u'|'), u"R12 WAR 1.30 V (+0.30) 25% (+5) AV2 +0.50|R12 DNT 5.00 V AV2 +0.50|"
                                     u"R12 WAR 2.00 V 30% AV2 +9.00|R10 war 1.00 V 20% AV2 +0.40|"
                                     u"R10 WAR 9.00 V AV2 +1.00");
    EXPECT_TRUE(history.indications({0, 1, 3}).isEmpty());

    put3("0\t1\t1\tR1\tA\n0\t1\t1\tR1\tB\n0\t1\t1\tR1\tC\n");
    history.refresh(path);
    EXPECT_EQ(history.latestLines({0, 1, 1}, 2), (QStringList{u"R1 A"_s, u"and 2 more of R1"_s}));
    put("row\n");
    EXPECT_THROW(history.refresh(path), FileError);
    EXPECT_NO_THROW(history.refresh(path)) << "once a file";
    EXPECT_TRUE(history.isEmpty());
    history.refresh(path + u"x"_s);
}

TEST_F(ResultFilesTest, PlanComesBackAndSortsStably)
{
    InspPlan plan;
    plan.name = u"Bars\t2"_s;
    plan.probe = u"MB-720"_s;
    plan.description = u"two\nlines"_s;
    plan.createTime = JDateTime::fromLocal(2020, 1, 2, 3, 4, 5);
    plan.order = InspPlan::Order::Column;
    plan.addTubes({{0, 5, 1}, {0, 1, 9}});
    plan.addTubes({{1, 5, 0}});
    plan.entries[0].acquired = 2;
    plan.entries[0].analyzed = 1;
    EXPECT_EQ(plan.entries[2], (brannock::PlanEntry{2, 5, 0, 1, 0, 0}));
    plan.storePlan(path);
    InspPlan again;
    again.loadPlan(path);
    EXPECT_EQ(again.entries, plan.entries);
    EXPECT_EQ(again.name, plan.name);
    EXPECT_EQ(again.description, plan.description);
    EXPECT_EQ(again.createTime, plan.createTime);
    EXPECT_EQ(again.order, InspPlan::Order::Column);
    expectEveryCutRefused([&] { again.loadPlan(path); });

    const auto numbers = [&](InspPlan::Order order) {
        again.sort(order);
        QList<int> list;
        for (const brannock::PlanEntry &entry : again.entries)
            list.append(entry.entryNum);
        return list;
    };
    EXPECT_EQ(numbers(InspPlan::Order::Row), (QList<int>{1, 0, 2}));
    EXPECT_EQ(numbers(InspPlan::Order::Column), (QList<int>{0, 1, 2}));
    again.removeEntries({0, 0});
    EXPECT_EQ(numbers(InspPlan::Order::Entry), (QList<int>{0, 1})) << "higher numbers move up";
    again.addTubes({{0, 1, 1}});
    EXPECT_EQ(numbers(InspPlan::Order::Entry), (QList<int>{0, 1, 2}));

    put("entry_num\trow\tcol\n4\t1\t1\n4\t1\t2\n");
    EXPECT_EQ(error([&] { again.loadPlan(path); }), u"3: Entry number 4 occurs twice, in lines 2 and 3.");
    EXPECT_EQ(again.entries.size(), 3);
    put("row\tcol\n1\t1\n1\t2\n");
    again.loadPlan(path);
    EXPECT_EQ(again.entries[1].entryNum, 1) << "without numbers the order of the lines counts";
}

} // namespace

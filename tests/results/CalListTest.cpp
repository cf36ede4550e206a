#include <db/ReportRows.h>
#include <results/CalList.h>
#include <results/ReportImportOptions.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using results::CalList;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

class CalListTest : public support::DatabaseTest
{
protected:
    CalListTest()
    {
        db::ReportWriter writer(database());
        for (int calNumber : {9, 3, 3}) {
            brannock::ReportEntry entry;
            entry.site.siteCode = u"TMC"_s;
            entry.site.compCode = u"SGA"_s;
            entry.outage = u"R1"_s;
            entry.operType = u"PRI"_s;
            entry.analystId = entry.operatorId = u"A"_s;
            entry.calNumber = calNumber;
            entry.defect = u"NDD"_s;
            writer.add(entry);
        }
    }

    qint64 rowCount() { return scalar(u"SELECT COUNT(*) FROM report"_s).integer(); }
};

TEST_F(CalListTest, ListsTheCalsInOrderWithTheirCounts)
{
    CalList list(session);
    ASSERT_TRUE(list.open());
    ASSERT_EQ(list.rows().size(), 2);
    EXPECT_EQ(list.rows()[0].cal, (results::Cal{u"TMC"_s, u"SGA"_s, u"PRI"_s, u"R1"_s, 0, 3}));
    EXPECT_EQ(list.rows()[0].count, 2);
    EXPECT_EQ(list.rows()[1].cal.calNum, 9);
    EXPECT_EQ(list.caption(), QString(u"Cals In - "_s + path));

    QStringList counts;
    for (const CalList::DayCount &each : list.dayCounts())
        counts.append(
            u"%1 %2 %3 %4"_s.arg(each.cal.calNum).arg(each.analyst, each.day.toString(u"%Y-%m-%d")).arg(each.count));
    EXPECT_EQ(counts.join(u", "), u"3 A 1970-01-01 2, 9 A 1970-01-01 1");

    ellery::SteamGen steamGen;
    EXPECT_EQ(CalList::columnTitles(steamGen).join(u','), u"ENTRY#,SITE CODE,COMP,OUTAGE,CAL,OPTYPE,COUNT");
    EXPECT_EQ(CalList::cells(list.rows()[0], 0, steamGen).join(u','), u"1,TMC,SGA,R1,3,PRI,2");
    steamGen.setTubes({{{0, 1, 1}, 0, 0, false}, {{1, 1, 1}, 0, 0, false}});
    EXPECT_EQ(CalList::columnTitles(steamGen).join(u','), u"ENTRY#,SITE CODE,COMP,OUTAGE,CAL,OPTYPE,SEC,COUNT");
    EXPECT_TRUE(list.closeWithCancel());
    EXPECT_TRUE(prompts.texts(Kind::Question).isEmpty());
}

TEST_F(CalListTest, DeletesTheCurrentCalAfterAQuestion)
{
    CalList list(session);
    ASSERT_TRUE(list.open());
    prompts.answerWith({Answer::No, Answer::Yes, Answer::Yes});
    list.deleteCurrent();
    EXPECT_EQ(prompts.lastStatus(), u"Delete cal cancelled.");
    list.deleteCurrent();
    EXPECT_EQ(prompts.texts(Kind::Information), QStringList{u"Select a cal to delete!"_s});
    EXPECT_FALSE(list.isChanged());

    list.setCurrent(1);
    list.deleteCurrent();
    EXPECT_EQ(prompts.lastStatus(), u"Cal deleted successfully!");
    EXPECT_EQ(list.rows().size(), 1);
    EXPECT_EQ(list.current(), 0);
    EXPECT_EQ(prompts.texts(Kind::Question)[0], u"Are you sure you wish to delete this cal?");
    list.closeWithOk();
    EXPECT_EQ(rowCount(), 2);
}

TEST_F(CalListTest, ClosingAfterADeletionAsksAndKeepsToTheAnswer)
{
    {
        CalList list(session);
        ASSERT_TRUE(list.open());
        list.setCurrent(0);
        prompts.answerWith({Answer::Yes, Answer::Cancel, Answer::No});
        list.deleteCurrent();
        EXPECT_FALSE(list.closeWithCancel());
        EXPECT_TRUE(list.closeWithCancel());
    }
    EXPECT_EQ(prompts.texts(Kind::Question).last(), u"Do you wish to save changes?");
    EXPECT_EQ(rowCount(), 3);
    {
        CalList list(session);
        ASSERT_TRUE(list.open());
        list.setCurrent(0);
        prompts.answerWith({Answer::Yes});
        list.deleteCurrent();
    }
    EXPECT_EQ(rowCount(), 3) << "a list that is dropped without closing rolls back";
    {
        CalList list(session);
        ASSERT_TRUE(list.open());
        list.setCurrent(0);
        prompts.answerWith({Answer::Yes, Answer::Yes});
        list.deleteCurrent();
        EXPECT_TRUE(list.closeWithCancel());
    }
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(session.workspace().transactionDepth(), 0);
}

TEST_F(CalListTest, FailuresAreReportedAndChangeNothing)
{
    execute(u"UPDATE report SET outage = \"O'1\" WHERE cal_num = 9"_s);
    CalList list(session);
    ASSERT_TRUE(list.open());
    for (int i = 0; i < list.rows().size(); ++i)
        if (list.rows()[i].cal.calNum == 9)
            list.setCurrent(i);
    prompts.answerWith({Answer::Yes});
    list.deleteCurrent();
    EXPECT_TRUE(prompts.texts(Kind::Error)[0].startsWith(u"Could not delete Cal from 'report' table.\n\n[3075] "));
    EXPECT_FALSE(list.isChanged());
    list.closeWithOk();

    execute(u"DROP TABLE report"_s);
    CalList without(session);
    EXPECT_TRUE(without.open());
    EXPECT_TRUE(prompts.texts(Kind::Error)[1].startsWith(u"Could not update Cal list.\n\n[3078] "));
    session.close();
    CalList closed(session);
    EXPECT_FALSE(closed.open());
}

TEST(ReportImportOptionsTest, ComeBackAsTheyWereStored)
{
    support::TemporaryFolder folder;
    const tarnwick::PathRoots roots{folder.path(), {}};
    results::ReportImportOptions options;
    EXPECT_EQ(options.printTitle, u"Palomine");
    EXPECT_EQ(options.firstSetting, 0);
    EXPECT_EQ(options.secondSetting, 1);
    options.printTitle = u"Other"_s;
    options.secondSetting = 5;
    options.print.sections[0].text = u"[DATE]\n"_s;
    options.print.margins.left = 1.5;
    options.store(roots);
    EXPECT_TRUE(folder.has(u"config/arvo/report_import.opt"_s));
    results::ReportImportOptions read;
    EXPECT_TRUE(read.load(roots));
    EXPECT_EQ(read.printTitle, u"Other");
    EXPECT_EQ(read.secondSetting, 5);
    EXPECT_EQ(read.print, options.print);
}

} // namespace

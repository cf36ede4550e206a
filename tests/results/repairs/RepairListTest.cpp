#include <results/repairs/RepairList.h>
#include <results/repairs/TubeRepairs.h>
#include <support/DatabaseFixture.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using results::Repair;
using results::RepairList;
using results::RepairOptions;
using results::RepairView;
using tarnwick::Answer;
using tarnwick::JDateTime;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

class RepairListTest : public support::DatabaseTest
{
protected:
    RepairListTest()
    {
        project.folder = folder.path();
        project.site.siteCode = u"TMC"_s;
        project.site.compCode = u"SGA"_s;
        project.currentOutage = u"1R12"_s;
        QList<ellery::Tube> tubes;
        for (qint16 col = 1; col <= 5; ++col)
            tubes.append({{0, 1, col}, float(col), 0, false});
        project.steamGen.setTubes(tubes);
    }

    /// more: further columns and their values, each beginning with a comma.
    void store(int col, const QString &type, const QString &columns = {}, const QString &values = {})
    {
        execute(
            u"INSERT INTO repairs (row, col, repair_type, date_scheduled%1) VALUES (1, %2, '%3', #3/4/2024 10:00#%4)"_s
                .arg(columns)
                .arg(col)
                .arg(type, values));
    }
    QStringList stored(const QString &columns = u"col, repair_type"_s)
    {
        return rows(u"SELECT "_s + columns + u" FROM repairs ORDER BY sec, row, col, repair_type, outage"_s);
    }
    /// What another program does meanwhile.
    void other(const QString &sql)
    {
        tarnwick::RecordingPrompts quiet;
        db::DatabaseSession others(quiet);
        others.open(path);
        db::executeSql(others.database(), sql);
    }
    QString visible(RepairView view)
    {
        list.options().view = view;
        list.applyFilter();
        QStringList columns;
        for (const int place : list.visible())
            columns.append(QString::number(list.repair(place).col));
        return columns.join(u' ');
    }

    brannock::Project project;
    RepairOptions options;
    RepairList list{session, project, options};
};

TEST_F(RepairListTest, FiltersCountsAndSelects)
{
    store(3, u"Plug"_s);
    store(1, u"Plug"_s, u", outage, date_completed, heat1, heat2"_s, u", '1R10', #4/5/2024#, 'A', 'B'"_s);
    store(2, u"Sleeve"_s, u", outage, date_completed, heat1"_s, u", '1R12', #4/5/2024#, 'A'"_s);
    execute(u"INSERT INTO repairs (row, col, repair_type, date_scheduled, comment) "
            u"VALUES (9, 9, 'Odd', #3/4/1885 12:00#, Null)"_s);
    ASSERT_TRUE(list.open());
    EXPECT_EQ(visible(RepairView::Scheduled), u"3 9");
    EXPECT_EQ(visible(RepairView::Completed), u"1 2");
    EXPECT_EQ(visible(RepairView::NeedHeat), u"2");
    EXPECT_EQ(visible(RepairView::Selected), u"");
    EXPECT_EQ(visible(RepairView::All), u"1 2 3 9");
    EXPECT_EQ(list.outageChoices(), (QStringList{u"All"_s, u"1R10"_s, u"1R12"_s}));
    EXPECT_EQ(list.typeChoices().last(), u"Odd");
    EXPECT_EQ(list.typeChoices().size(), 10);
    options.repairType = u"plug"_s;
    EXPECT_EQ(visible(RepairView::All), u"1 3");
    list.selectAll();
    EXPECT_EQ(list.countsText(),
              u"Total         4\nSelected      2\nScheduled     2\nNew           0\nVisible       2");
    options.resetFilters();
    list.clearSelections();
    list.selectSameDate(1);
    EXPECT_EQ(visible(RepairView::Selected), u"1 2 3");
    list.clearSelections();
    list.selectAllScheduled();
    EXPECT_EQ(visible(RepairView::Selected), u"3 9");
    EXPECT_EQ(list.tubesOf(list.selection()), QList<qint32>{2});
    EXPECT_EQ(prompts.texts(Kind::Error), QStringList{u"Tube ROW 9 COL 9 does not exist."_s});
    EXPECT_EQ(list.cells(1).mid(4), (QStringList{u"Odd"_s, u""_s, u"03/04/1885 12:00"_s, u""_s}));
    ellery::TubeStates tubes(project.steamGen.numTube());
    tubes.setSelected(0, true);
    list.clearSelections();
    list.selectTubes(tubes);
    EXPECT_EQ(list.selection(), QList<int>{0});
    EXPECT_TRUE(list.closeWithCancel() && list.closeWithOk());
}

TEST_F(RepairListTest, RepairsOfATubeAreReadWithoutWaiting)
{
    store(1, u"Plug"_s);
    store(1, u"Sleeve"_s, u", outage, date_completed"_s, u", '1R10', #4/5/2024#"_s);
    store(1, u"Stabilizing Spear"_s);
    store(2, u"Plug"_s);
    const QStringList both{u"Plug, scheduled 03/04/2024"_s, u"Sleeve, 1R10, completed 04/05/2024"_s};
    EXPECT_EQ(results::repairLines(session, {0, 1, 1}, 3).first(2), both);
    EXPECT_EQ(results::repairLines(session, {0, 1, 1}, 2).last(), u"and 2 more repairs");
    EXPECT_TRUE(results::repairLines(session, {0, 1, 3}, 3).isEmpty());
    execute(u"DROP TABLE repairs"_s);
    EXPECT_TRUE(results::repairLines(session, {0, 1, 1}, 3).isEmpty());
    session.close();
    EXPECT_TRUE(results::repairLines(session, {0, 1, 1}, 3).isEmpty());
    EXPECT_TRUE(prompts.texts(Kind::Error).isEmpty());
}

TEST_F(RepairListTest, SchedulesAndFindsDuplicates)
{
    store(2, u"Plug"_s, u", outage"_s, u", '1R10'"_s);
    ASSERT_TRUE(list.open());
    EXPECT_EQ(list.selectDuplicates(), -1);
    EXPECT_EQ(prompts.lastStatus(), u"No duplicates.");
    Repair pattern = list.scheduleTemplate();
    EXPECT_FALSE(list.isAcceptable(pattern));
    EXPECT_EQ(prompts.texts(Kind::Information).last(), u"Please select a repair type.");
    pattern.repairType = u"Plug"_s;
    pattern.vendor = QString(51, u'v');
    EXPECT_FALSE(list.isAcceptable(pattern));
    pattern.vendor = u"V"_s;
    ASSERT_TRUE(list.isAcceptable(pattern));
    list.schedule({}, pattern);
    EXPECT_EQ(prompts.lastStatus(), u"Added 0 new repairs.");
    EXPECT_FALSE(list.isChanged());
    options.view = RepairView::Completed;
    list.schedule({0, 1}, pattern);
    EXPECT_EQ(prompts.lastStatus(), u"Added 2 new repairs.");
    EXPECT_EQ(prompts.texts(Kind::Information).last(), u"There are 1 duplicate repairs.");
    EXPECT_EQ(list.counts().added, 2);
    EXPECT_EQ(list.visible().size(), 3);
    EXPECT_EQ(list.selectDuplicates(), 2);
    EXPECT_EQ(prompts.lastStatus(), u"Found 1 duplicate.");
    ASSERT_TRUE(list.closeWithOk());
    EXPECT_EQ(
        stored(u"col, repair_type, outage, site_code, comp, vendor, is_perm, type"_s),
        (QStringList{u"1|Plug|1R12|TMC|SGA|V|-1|"_s, u"2|Plug|1R10|-|-|-|-1|-"_s, u"2|Plug|1R12|TMC|SGA|V|-1|"_s}));
}

TEST_F(RepairListTest, ChangesAreWrittenTogetherOrNotAtAll)
{
    for (int col = 1; col <= 4; ++col)
        store(col, u"Plug"_s);
    ASSERT_TRUE(list.open());
    other(u"UPDATE repairs SET comment = 'theirs' WHERE col = 4"_s); // an open list keeps nobody waiting
    list.setSelected(0, true);
    list.setSelected(1, true);
    EXPECT_FALSE(list.pasteHeats(u"a\nb\nc"_s));
    ASSERT_TRUE(list.pasteHeats(u"H1\tH2\n\tH3\n"_s));
    EXPECT_EQ(list.complete({1, 1}, JDateTime::fromLocal(2025, 2, 3)), 1);
    list.clearSelections();
    list.setSelected(2, true);
    prompts.answerWith({Answer::No, Answer::Yes, Answer::Cancel, Answer::Yes});
    list.deleteSelected();
    EXPECT_EQ(list.count(), 4);
    list.deleteSelected();
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(stored().size(), 4) << "not before the list is closed";
    EXPECT_FALSE(list.closeWithCancel());
    EXPECT_TRUE(list.closeWithCancel());
    EXPECT_EQ(stored(u"col, heat1, heat2, date_completed, comment"_s),
              (QStringList{u"1|H1|H2|-|-"_s, u"2|-|H3|45691|-"_s, u"4|-|-|-|theirs"_s}));

    // A rule of the table refuses the second of two changes: nothing of them is stored, and the list can be corrected.
    RepairList again(session, project, options);
    ASSERT_TRUE(again.open());
    Repair first = again.repair(0);
    first.vendor = u"V"_s;
    again.change(0, first);
    Repair second = again.repair(1);
    second.repairType.clear();
    again.change(1, second);
    again.setSelected(2, true);
    prompts.answerWith({Answer::Yes});
    again.deleteSelected();
    EXPECT_FALSE(again.closeWithOk());
    EXPECT_TRUE(prompts.texts(Kind::Error).last().startsWith(u"Could not update repairs in database.\n\n"_s));
    EXPECT_EQ(stored(u"vendor"_s), (QStringList{u"-"_s, u"-"_s, u"-"_s}));
    second.repairType = u"Sleeve"_s;
    again.change(1, second);
    EXPECT_TRUE(again.closeWithOk());
    EXPECT_EQ(stored(u"col, repair_type, vendor"_s), (QStringList{u"1|Plug|V"_s, u"2|Sleeve|-"_s}));
}

TEST_F(RepairListTest, ChangesOfOtherProgramsAreNotOverwrittenUnasked)
{
    for (int col = 1; col <= 5; ++col)
        store(col, u"Plug"_s);
    ASSERT_TRUE(list.open());
    const auto set = [&](int place) {
        Repair repair = list.repair(place);
        repair.vendor = u"mine"_s;
        list.change(place, repair);
    };
    for (const int place : {0, 1, 2, 4})
        set(place);
    list.setSelected(3, true);
    prompts.answerWith({Answer::Yes});
    list.deleteSelected();
    other(u"UPDATE repairs SET vendor = 'theirs' WHERE col IN (1, 2, 4, 5)"_s);
    other(u"DELETE FROM repairs WHERE col = 3"_s);

    prompts.answerWith({Answer::Cancel});
    EXPECT_FALSE(list.closeWithOk());
    EXPECT_EQ(prompts.texts(Kind::Question).last(),
              u"Another program has changed repair \"Plug\" of tube ROW 1 COL 1 since it was fetched.\nOverwrite it?");
    EXPECT_EQ(stored(u"vendor"_s).count(u"theirs"_s), 4);
    // Overwrite, keep theirs, add again, overwrite; then the deletion.
    prompts.answerWith({Answer::Yes, Answer::No, Answer::Yes, Answer::Yes, Answer::Yes});
    EXPECT_TRUE(list.closeWithOk());
    EXPECT_EQ(stored(u"col, vendor"_s), (QStringList{u"1|mine"_s, u"2|theirs"_s, u"3|mine"_s, u"5|mine"_s}));
    EXPECT_FALSE(prompts.unusedAnswers());
}

TEST_F(RepairListTest, ADraftRepeatsTheChangesOnRowsThatAreAsTheyWere)
{
    for (int col = 1; col <= 4; ++col)
        store(col, u"Plug"_s);
    ASSERT_TRUE(list.open());
    EXPECT_TRUE(list.draft().isEmpty());
    for (const int place : {0, 1}) {
        Repair repair = list.repair(place);
        repair.length = 2.25;
        list.change(place, repair);
        list.setSelected(place + 2, true);
    }
    prompts.answerWith({Answer::Yes});
    list.deleteSelected();
    Repair pattern = list.scheduleTemplate();
    pattern.repairType = u"Stake"_s;
    list.schedule({4}, pattern);
    const QByteArray draft = list.draft();

    other(u"UPDATE repairs SET vendor = 'theirs' WHERE col IN (2, 4)"_s);
    RepairList again(session, project, options);
    ASSERT_TRUE(again.open());
    for (qsizetype size = 0; size < draft.size(); ++size)
        ASSERT_THROW(again.restoreDraft(draft.first(size)), tarnwick::Error) << size;
    EXPECT_FALSE(again.isChanged());
    prompts.clear();
    again.restoreDraft(draft);
    EXPECT_TRUE(prompts.entries().last().text.startsWith(u"1 repairs that you had deleted were changed"));
    EXPECT_EQ(again.changeCount(), 4);
    prompts.answerWith({Answer::No}); // the changed one was also changed by the other program
    EXPECT_TRUE(again.closeWithOk());
    EXPECT_EQ(stored(u"col, repair_type, length"_s),
              (QStringList{u"1|Plug|2.25"_s, u"2|Plug|0"_s, u"4|Plug|0"_s, u"5|Stake|0"_s}));
}

TEST_F(RepairListTest, AKillWhileWritingLeavesTheDatabaseAsItWas)
{
    for (int col = 1; col <= 3; ++col)
        store(col, u"Plug"_s);
    session.close();
    const pid_t child = fork();
    if (child == 0) {
        /// The question comes when everything but the last repair is written.
        struct Killer : tarnwick::RecordingPrompts
        {
            Answer ask(tarnwick::Buttons, const QString &, int) override
            {
                kill(getpid(), SIGKILL);
                return {};
            }
        } killer;
        db::DatabaseSession dying(killer);
        dying.open(path);
        RepairList theirs(dying, project, options);
        theirs.open();
        Repair changed = theirs.repair(0);
        changed.vendor = u"mine"_s;
        theirs.schedule({0, 1}, changed);
        changed.col = 3;
        theirs.change(theirs.count() - 1, changed);
        other(u"UPDATE repairs SET vendor = 'theirs' WHERE col = 3"_s);
        theirs.closeWithOk();
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    session.open(path);
    EXPECT_EQ(stored(u"col, vendor"_s), (QStringList{u"1|-"_s, u"2|-"_s, u"3|theirs"_s}));
}

TEST_F(RepairListTest, FailuresAreToldAndFieldsTakeOnlyTheirValues)
{
    store(1, u"Plug"_s);
    session.open(path, dao::OpenMode::ReadOnly);
    ASSERT_TRUE(list.open());
    EXPECT_TRUE(list.isReadOnly());
    list.complete({0}, JDateTime::now());
    EXPECT_FALSE(list.closeWithOk());
    EXPECT_EQ(prompts.texts(Kind::Error).size(), 1);
    session.close();
    EXPECT_FALSE(list.open());

    Repair repair;
    const auto set = [&](QStringView field, const QString &text) {
        try {
            results::setRepairField(repair, *results::findRepairField(field), text);
            return true;
        } catch (const tarnwick::Error &) {
            return false;
        }
    };
    EXPECT_TRUE(set(u"Length", u"2.5"_s) && set(u"is_perm", u"No"_s) && set(u"date_completed", u"2024-03-04 05:06"_s));
    EXPECT_EQ(repair.length, 2.5);
    EXPECT_FALSE(repair.isPermanent);
    EXPECT_EQ(repair.dateCompleted.toIso(), u"2024-03-04T05:06:00");
    EXPECT_TRUE(set(u"date_completed", u""_s) && repair.isScheduled());
    EXPECT_FALSE(set(u"length", u"nan"_s) || set(u"is_perm", u"maybe"_s) || set(u"date_completed", u"2024-02-30"_s) ||
                 set(u"vendor", QString(51, u'x')));
    EXPECT_FALSE(results::findRepairField(u"lenght"));

    options.view = RepairView::NeedHeat;
    options.outage = u"1R9"_s;
    options.storeTo(folder.path(u"repairs.opt"_s));
    RepairOptions loaded;
    loaded.loadFrom(folder.path(u"repairs.opt"_s));
    EXPECT_EQ(loaded.view, RepairView::NeedHeat);
    EXPECT_EQ(loaded.outage, u"1R9");
    EXPECT_EQ(loaded.repairType, u"All");
}

} // namespace

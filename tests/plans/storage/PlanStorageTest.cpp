#include <db/ReportRows.h>
#include <plans/storage/ListEditor.h>
#include <plans/storage/PlanCheck.h>
#include <plans/storage/PlanEditor.h>
#include <plans/storage/PlanStorage.h>
#include <plans/storage/TubeSets.h>
#include <plans/storage/TubeSources.h>
#include <support/DatabaseFixture.h>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;
using brannock::InspPlan;
using tarnwick::Answer;

namespace plans {

namespace {

class PlanStorageTest : public support::DatabaseTest
{
protected:
    PlanStorageTest()
    {
        project.folder = folder.path();
        project.currentOutage = u"R12"_s;
        project.steamGen = sample::block(4, 5);
        tubes = ellery::TubeStates(project.steamGen.numTube());
    }
    InspPlan plan(const QString &name, int count = 3) const
    {
        InspPlan plan;
        plan.name = name;
        plan.probe = u"BOBBIN"_s;
        plan.createTime = tarnwick::JDateTime::fromLocal(2024, 2, 3, 4, 5, 6);
        for (int i = 0; i < count; ++i)
            plan.addTubes({project.steamGen[i].address});
        return plan;
    }
    bool upload(const InspPlan &one, const QString &name, std::initializer_list<Answer> answers = {})
    {
        prompts.answerWith(answers);
        return PlanStorage(session).upload(one, name);
    }
    void addResult(int col, const QString &outage, const QString &defect)
    {
        brannock::ReportEntry entry;
        entry.col = col;
        entry.outage = outage;
        entry.defect = defect;
        entry.site.siteCode = u"S"_s;
        entry.site.compCode = u"C"_s;
        entry.calNumber = 1;
        entry.operType = u"PRI"_s;
        entry.analystId = entry.operatorId = u"A"_s;
        db::ReportWriter(database()).add(entry);
    }
    QStringList names(const QString &table) { return rows(u"SELECT name FROM %1 ORDER BY name"_s.arg(table)); }

    brannock::Project project;
    ellery::TubeStates tubes;
};

} // namespace

TEST_F(PlanStorageTest, PlansComeBackAndReplacingDeletesThePresentName)
{
    InspPlan stored = plan(u"A b"_s);
    stored.entries[1].acquired = 1;
    stored.description = u"text"_s;
    ASSERT_TRUE(upload(stored, u"A b"_s));
    EXPECT_TRUE(prompts.lastStatus().startsWith(u"Successfully uploaded \"A b\" in 0."));
    const auto fetched = PlanStorage(session).fetch(u"A b"_s);
    ASSERT_TRUE(fetched);
    EXPECT_EQ(fetched->entries, stored.entries);
    EXPECT_EQ(fetched->createTime, stored.createTime);
    EXPECT_EQ(fetched->description, stored.description);
    EXPECT_EQ(fetched->probe, stored.probe);

    EXPECT_FALSE(upload(stored, u"a B"_s, {Answer::Cancel})) << "names differ in case only";
    EXPECT_EQ(prompts.lastStatus(), u"Upload cancelled.");
    EXPECT_TRUE(upload(plan(u"A b"_s, 2), u"A b"_s, {Answer::Ok}));
    ASSERT_TRUE(upload(plan(u"B"_s, 1), u"B"_s));
    EXPECT_FALSE(upload(plan(u"B"_s, 1), u"A b"_s, {Answer::Ok})) << "deletes B, and A b is still there";
    EXPECT_TRUE(prompts.entries().last().text.startsWith(u"Could not upload plan 'A b'.\n\n[3022]"_s));
    EXPECT_EQ(names(u"plans"_s), QStringList{u"A b"_s});
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM plan_entry"_s).integer(), 2);

    EXPECT_TRUE(upload(plan(u"x"_s), QString(50, u'n')));
    EXPECT_FALSE(upload(plan(u"x"_s), QString(51, u'n')));
    EXPECT_FALSE(upload(plan(u"x"_s), u"it's"_s));
    EXPECT_EQ(prompts.entries().last().number, 1043);
    EXPECT_FALSE(PlanStorage(session).fetch(u"none"_s));
    prompts.answerWith({Answer::No, Answer::Yes});
    EXPECT_FALSE(PlanStorage(session).remove(u"A b"_s));
    EXPECT_TRUE(PlanStorage(session).remove(u"A b"_s));
    EXPECT_EQ(names(u"plan_entry"_s), (QStringList{3, QString(50, u'n')}));
    const auto list = PlanStorage(session).list();
    ASSERT_EQ(list->size(), 1);
    EXPECT_EQ(list->first().count, 3);
}

TEST_F(PlanStorageTest, TubeSetsComeBackWithTheirNotes)
{
    TubeList list{{}, {{4, 1, 2, 0, markOf(0xFF41, 0x80FF00)}, {2, 3, 4, 0, {}}}, u"note\n\nmore\n"_s};
    TubeSets sets(session);
    ASSERT_TRUE(sets.upload(list, u"S"_s));
    EXPECT_EQ(prompts.texts(tarnwick::RecordingPrompts::Entry::Kind::Status),
              (QStringList{u"Uploading \"S\" ..."_s, u"Upload successful."_s}));
    const auto fetched = sets.fetch(u"S"_s);
    ASSERT_TRUE(fetched);
    EXPECT_EQ(fetched->description, list.description);
    EXPECT_EQ(fetched->entries, (QList<ListFillTube>{list.entries[1], list.entries[0]})) << "in the order of numbers";
    prompts.answerWith({Answer::Ok, Answer::No});
    EXPECT_FALSE(sets.upload(list, u"s"_s));
    EXPECT_EQ(prompts.lastStatus(), u"Upload cancelled");
    list.entries[1].entryNum = 4;
    EXPECT_FALSE(sets.upload(list, u"S"_s)) << "refused before the set that is there is deleted";
    EXPECT_TRUE(prompts.entries().last().text.contains(u"Util | Set Index"));
    EXPECT_TRUE(sets.fetch(u"S"_s));
    EXPECT_FALSE(sets.upload(list, QString(51, u'n')));
    EXPECT_FALSE(prompts.entries().last().text.contains(u"Util | Set Index")) << "the name is refused";
    EXPECT_FALSE(sets.fetch(u"T"_s));
    EXPECT_TRUE(prompts.entries().last().text.startsWith(u"Fetch \"T\" failed."_s));
}

TEST_F(PlanStorageTest, ResultsMakeAPlanAnalyzed)
{
    addResult(0, u"R12"_s, u"NDD"_s);
    addResult(1, u"R12"_s, u"INC"_s);
    addResult(2, u"R11"_s, u"NDD"_s);
    prompts.clear();
    const auto flags = [&](const QStringList &codes) {
        InspPlan checked = plan(u"p"_s);
        EXPECT_TRUE(checkPlan(session, checked, u"R12"_s, codes, nullptr));
        QString text;
        for (const brannock::PlanEntry &entry : checked.entries)
            text += entry.analyzed ? u'1' : u'0';
        return text;
    };
    EXPECT_EQ(flags({}), u"110");
    EXPECT_EQ(prompts.texts(tarnwick::RecordingPrompts::Entry::Kind::Status).first(3),
              (QStringList{u"0%"_s, u"33%"_s, u"66%"_s}));
    EXPECT_EQ(flags({u"INC"_s, u"BAD"_s}), u"100");
    EXPECT_EQ(countByOutage(session, plan(u"p"_s), nullptr), (QList<OutageCount>{{u"R11"_s, 1}, {u"R12"_s, 2}}));
    InspPlan unchanged = plan(u"p"_s);
    EXPECT_FALSE(checkPlan(session, unchanged, u"R'12"_s, {}, nullptr));
    EXPECT_TRUE(prompts.entries().last().text.startsWith(u"Could not check if plan is done."_s));
}

TEST_F(PlanStorageTest, PlanIsEditedStoredAndReopened)
{
    PlanEditor editor(session, project);
    EXPECT_EQ(editor.caption(), u"File Plan - Untitled");
    for (const int tube : {3, 5, 7})
        tubes.setSelected(tube, true);
    tubes.setMark(5, markOf(u'A', 1));
    tubes.setMark(9, markOf(u'A', 1));
    editor.setOrder(PlanEditor::Order::Row);
    EXPECT_EQ(editor.loadSelected(tubes), 0);
    EXPECT_EQ(editor.plan().order, InspPlan::Order::Entry);
    EXPECT_EQ(editor.loadSelected(tubes), 3);
    EXPECT_EQ(editor.plan().entries.size(), 3);
    EXPECT_EQ(prompts.entries().last().number, 1047);
    EXPECT_EQ(editor.loadSymbols(tubes), 3);
    EXPECT_EQ(prompts.entries().last().text, u"1 duplicate tubes were not added to the plan.");
    editor.removeEntries({0});
    EXPECT_EQ(editor.plan().entries.first().entryNum, 0);
    EXPECT_FALSE(editor.setLabel(0, ellery::Axis::Row, u"x"_s));
    EXPECT_TRUE(editor.setLabel(0, ellery::Axis::Row, u" 3"_s));
    EXPECT_EQ(editor.plan().entries.first().row, 3);
    editor.moveEntries({0}, 3);
    EXPECT_EQ(editor.plan().entries.last().row, 3);
    EXPECT_EQ(editor.plan().entries.last().entryNum, 2);
    editor.paste(u"3\t4\nno\n3\t4\n"_s);
    EXPECT_EQ(prompts.entries().last().text,
              u"Added 1 tubes; 1 were there already. 1 lines were not understood:\n\tline 2: no\n");
    editor.combine({{0, 3, 4}, {0, 2, 2}}, Combine::Remove);
    EXPECT_EQ(editor.plan().entries.size(), 3);

    editor.options.probeRequired = editor.options.extentRequired = true;
    EXPECT_FALSE(editor.store(folder.path(u"plans/a.pln"_s)));
    EXPECT_EQ(prompts.entries().last().text, u"Please enter a valid:\n\tProbe\n\tBegin test\n\tEnd test\n");
    editor.setFields({u"P"_s, u"TEH"_s, u"TEC"_s, {}});
    EXPECT_EQ(editor.fileName(), u"default.pln");
    EXPECT_TRUE(editor.isModified());
    PlanEditor recovered(session, project);
    recovered.restoreDraft(editor.draft());
    EXPECT_EQ(recovered.plan().entries, editor.plan().entries);
    ASSERT_TRUE(editor.store(folder.path(u"plans/a.pln"_s)));
    EXPECT_EQ(editor.caption(), u"File Plan - a.pln");
    EXPECT_FALSE(editor.isModified());
    ASSERT_TRUE(editor.upload(u"in db"_s, nullptr));
    EXPECT_EQ(editor.caption(), u"ARVO Plan - in db");
    ASSERT_TRUE(editor.open(folder.path(u"plans/a.pln"_s)));
    EXPECT_EQ(editor.summary(), u"3 tubes, P, TEH to TEC: 0 acquired, 0 analyzed, 3 left (0% done)");
    folder.write(u"plans/a.pln"_s, "row\n");
    EXPECT_FALSE(editor.open(folder.path(u"plans/a.pln"_s)));
    EXPECT_EQ(editor.plan().entries.size(), 3) << "nothing is lost";
}

TEST_F(PlanStorageTest, ListIsEditedStoredAndReopened)
{
    ListEditor editor(session, project);
    tubes.setSelected(6, true);
    tubes.setMark(6, markOf(u'Q', 7));
    editor.addSelected(tubes);
    EXPECT_EQ(editor.addSymbols(tubes), 1);
    EXPECT_EQ(editor.list().entries[1], (ListFillTube{1, 1, 1, 0, markOf(u'Q', 7)}));
    editor.paste(u"3 4\n0 0"_s);
    editor.setOrder(ListEditor::Order::Row);
    editor.setIndex(10, {0});
    EXPECT_EQ(editor.list().entries.first(), (ListFillTube{10, 0, 0, 0, {}}));
    editor.moveEntries({0, 3}, 2);
    EXPECT_EQ(editor.list().entries[1].entryNum, 10);
    EXPECT_EQ(editor.list().entries[2].entryNum, 13);
    editor.removeEntries({1});
    editor.setDescription(u"why\n"_s);
    ListEditor recovered(session, project);
    EXPECT_EQ(recovered.draft(), QByteArray());
    recovered.restoreDraft(editor.draft());
    EXPECT_EQ(recovered.list(), editor.list());
    EXPECT_TRUE(recovered.isModified());
    EXPECT_EQ(editor.fileForTools(), u"");
    EXPECT_EQ(prompts.entries().last().text, u"Open a file first.");
    const QString listPath = folder.path(u"tube_lists/a.lst"_s);
    ASSERT_TRUE(editor.store(listPath));
    EXPECT_TRUE(folder.read(u"tube_lists/a.lst"_s).startsWith("# File tube_lists\\a.lst\n"));
    folder.write(u"tube_lists/a.lst"_s, folder.read(u"tube_lists/a.lst"_s) + "  1 99 99\n");
    ASSERT_TRUE(editor.open(listPath));
    EXPECT_EQ(prompts.entries().last().text,
              u"Could not parse 1 line(s).\n\nSelect \"Util | View Parsed File\" menu to see the errors.");
    EXPECT_EQ(editor.caption(), u"File List - a.lst");
    EXPECT_EQ(editor.list().entries.size(), 3);
    EXPECT_EQ(editor.list().description, u"why\n");
    ASSERT_TRUE(editor.upload(u"set"_s, nullptr));
    EXPECT_EQ(editor.caption(), u"ARVO List - set");
    EXPECT_EQ(editor.fileForTools(), u"");
    EXPECT_EQ(prompts.entries().last().text, u"List is not a file.");
    editor.combine({{0, 3, 4}}, Combine::Intersect);
    EXPECT_EQ(editor.list().entries.size(), 1);
    ASSERT_TRUE(editor.fetch(u"set"_s, nullptr));
    EXPECT_EQ(editor.list().entries.size(), 3);
    EXPECT_FALSE(editor.isModified());
}

TEST_F(PlanStorageTest, TubesAreTakenFromEverySource)
{
    const QList<NamedTubes> ofMap{{u"Selected tubes"_s, {{0, 1, 1}}}};
    ASSERT_TRUE(upload(plan(u"P"_s), u"P"_s));
    ASSERT_TRUE(TubeSets(session).upload({u"S"_s, {{0, 3, 4, 0, {}}}, {}}, u"S"_s));
    folder.write(u"tube_lists/l.lst"_s, "0 2 2\n1 9 9\n");
    plan(u"F"_s, 2).storePlan(folder.path(u"plans/f.pln"_s));
    const TubeSources sources(session, project, ofMap);
    EXPECT_EQ(sources.names(), (QStringList{u"Selected tubes"_s, u"Tube set: S"_s, u"Plan: P"_s, u"List file: l.lst"_s,
                                            u"Plan file: f.pln"_s}));
    QList<qsizetype> counts;
    for (const QString &name : sources.names())
        counts.append(sources.tubes(name)->size());
    EXPECT_EQ(counts, (QList<qsizetype>{1, 1, 3, 1, 2}));
    EXPECT_FALSE(sources.tubes(u"typed"_s));
}

} // namespace plans

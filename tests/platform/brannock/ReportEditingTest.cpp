#include <brannock/EntryProblems.h>
#include <brannock/ReportColumns.h>
#include <brannock/ReportDocument.h>
#include <brannock/ReportGrid.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace brannock;

namespace {

std::string toStd(const char16_t *text)
{
    return QString::fromUtf16(text).toStdString();
}

ReportEntry result(int row, const QString &code = u"NDD"_s)
{
    ReportEntry entry;
    entry.row = row;
    entry.col = 1;
    entry.defect = code;
    return entry;
}

Report reportOf(int count)
{
    Report report;
    for (int i = 0; i < count; ++i)
        report.entries.append(result(i));
    return report;
}

QList<int> rowsOf(const ReportDocument &document)
{
    QList<int> rows;
    for (const ReportEntry &entry : document.report().entries)
        rows.append(entry.row);
    return rows;
}

} // namespace

TEST(ReportDocumentTest, EveryKindOfChangeIsUndoneAndRedone)
{
    ReportDocument document;
    QList<int> told;
    document.changed = [&told](int entry) { told.append(entry); };
    document.setReport(reportOf(5));
    const auto renumber = [](ReportEntry &entry) { entry.row += 10; };
    EXPECT_EQ(document.change(u"Edit"_s, {1, 3}, renumber), 2);
    EXPECT_EQ(document.change(u"Nothing"_s, {1, 3}, [](ReportEntry &) {}), 0);
    document.remove(u"Delete"_s, {4, 0});
    document.insert(u"Insert"_s, 1, {result(20), result(21)});
    document.remove(u"Several"_s, {4, 0, 2});
    const QList<QList<int>> states{{0, 1, 2, 3, 4}, {0, 11, 2, 13, 4}, {11, 2, 13}, {11, 20, 21, 2, 13}, {20, 2}};
    EXPECT_EQ(rowsOf(document), states.last());
    EXPECT_EQ(document.undoLabel(), u"Several");
    for (int i = 3; i >= 0; --i) {
        document.undo();
        EXPECT_EQ(rowsOf(document), states[i]);
    }
    EXPECT_FALSE(document.canUndo());
    EXPECT_FALSE(document.isModified());
    for (int i = 1; i <= 4; ++i) {
        document.redo();
        EXPECT_EQ(rowsOf(document), states[i]);
    }
    EXPECT_FALSE(document.canRedo());
    document.setStored();
    document.undo();
    EXPECT_TRUE(document.isModified());
    document.change(u"Edit"_s, {0}, renumber);
    EXPECT_FALSE(document.canRedo());
    document.undo();
    EXPECT_TRUE(document.isModified()) << "the stored state can no longer be reached";
    EXPECT_EQ(told.count(ReportDocument::kSeveral), 3);
}

TEST(ReportDocumentTest, OldChangesAreForgottenAndTheStoredStateWithThem)
{
    ReportDocument document;
    document.setReport(reportOf(1));
    for (int i = 0; i < ReportDocument::kMaxLevels + 5; ++i)
        document.change(u"Edit"_s, {0}, [](ReportEntry &entry) { ++entry.row; });
    while (document.canUndo())
        document.undo();
    EXPECT_EQ(document.entry(0).row, 5);
    EXPECT_TRUE(document.isModified());
}

TEST(ReportColumnsTest, LocationsAreReadAsTheyAreShownAndAsTheyAreTyped)
{
    const struct
    {
        const char16_t *typed;
        const char16_t *landmark;
        float offset;
        const char16_t *shown;
    } kCases[] = {{u"07H +0.25", u"07H", 0.25F, u"07H +0.25"},
                  {u"07H-.5", u"07H", -0.5F, u"07H -0.50"},
                  {u" TSH 3 ", u"TSH", 3, u"TSH +3.00"},
                  {u"AV1", u"AV1", 0, u"AV1 +0.00"},
                  {u"AV1 - 2.5", u"AV1", -2.5F, u"AV1 -2.50"},
                  {u"", u"", 0, u""},
                  {u"+0.25", u"", 0, u""}};
    for (const auto &each : kCases) {
        const TubeLoc location = parseLocation(QString::fromUtf16(each.typed));
        EXPECT_EQ(location.landmark, QString::fromUtf16(each.landmark)) << toStd(each.typed);
        EXPECT_EQ(location.offset, each.offset) << toStd(each.typed);
        EXPECT_EQ(locationText(location), QString::fromUtf16(each.shown));
    }
}

TEST(ReportColumnsTest, WhatAColumnShowsCanBeTypedAndWrongValuesAreRefused)
{
    ReportEntry entry = result(12, u"VOL"_s);
    entry.meas = {u"Vpp"_s, 1.25, 0, 135, 42};
    entry.location = {u"07H"_s, -0.5F, 17, 99};
    entry.entryTime = tarnwick::JDateTime::fromLocal(2026, 3, 15, 14, 30, 5);
    for (const ReportColumn &column : reportColumns()) {
        ReportEntry typed = entry;
        EXPECT_EQ(column.set(typed, column.text(entry)), QString()) << toStd(column.field);
        EXPECT_EQ(typed, entry) << toStd(column.field);
        const ReportEntry before = typed;
        if (column.align == tarnwick::ColumnAlign::Right || QStringView(column.field) == u"entry_time") {
            EXPECT_NE(column.set(typed, u"x"_s), QString()) << toStd(column.field);
            EXPECT_EQ(typed, before);
        }
    }
    EXPECT_NE(reportColumn(u"cal_num").set(entry, u"65536"_s), QString());
    EXPECT_NE(reportColumn(u"loc_land").set(entry, u"+0.25"_s), QString());
    EXPECT_EQ(reportColumn(u"loc_land").set(entry, u"08H +1"_s), QString());
    EXPECT_EQ(entry.location.dist, 0) << "the distance of the old place does not hold";
}

TEST(EntryProblemsTest, EachKindIsFoundAndACompleteEntryHasNone)
{
    ellery::SteamGen steamGen;
    steamGen.setTubes({{{0, 1, 1}, 0, 0, false}});
    ellery::LandmarkSet set;
    set.landmarks.append({.number = 1, .type = u"SUPPORT"_s, .name = u"07H"_s});
    steamGen.landmarkSets.append(set);
    const DefectList defects = DefectList::standard();
    const EntryCheck check(steamGen, defects);

    ReportEntry complete = result(1);
    complete.site.siteCode = complete.site.compCode = complete.operType = complete.outage = u"A"_s;
    complete.analystId = complete.operatorId = u"B"_s;
    complete.calNumber = 1;
    EXPECT_TRUE(check.problems(complete).isEmpty());

    using Kind = EntryProblem::Kind;
    const std::tuple<Kind, const char16_t *, void (*)(ReportEntry &)> kFaults[] = {
        {Kind::UnknownTube, u"row", [](ReportEntry &entry) { entry.row = 2; }},
        {Kind::MissingCal, u"outage", [](ReportEntry &entry) { entry.outage.clear(); }},
        {Kind::MissingCal, u"cal_num", [](ReportEntry &entry) { entry.calNumber = 0; }},
        {Kind::OutOfRange, u"cal_num", [](ReportEntry &entry) { entry.calNumber = 40'000; }},
        {Kind::OutOfRange, u"id", [](ReportEntry &entry) { entry.id = 0x8000; }},
        {Kind::MissingAnalyst, u"analyst_id", [](ReportEntry &entry) { entry.analystId.clear(); }},
        {Kind::MissingAnalyst, u"oper_id", [](ReportEntry &entry) { entry.operatorId.clear(); }},
        {Kind::TextTooLong, u"util1", [](ReportEntry &entry) { entry.util1 = QString(51, u'x'); }},
        {Kind::UnknownCode, u"defect", [](ReportEntry &entry) { entry.defect = u"XYZ"_s; }},
        {Kind::MissingValue, u"volts",
         [](ReportEntry &entry) {
             entry.defect = u"DNT"_s;
             entry.location.landmark = u"07H"_s;
         }},
        {Kind::UnknownLandmark, u"to_land",
         [](ReportEntry &entry) {
             entry.defect = u"PLG"_s;
             entry.to.landmark = u"99H"_s;
         }},
    };
    for (const auto &[kind, field, spoil] : kFaults) {
        ReportEntry entry = complete;
        spoil(entry);
        const QList<EntryProblem> problems = check.problems(entry);
        EXPECT_EQ(check.hasProblem(entry), !problems.isEmpty());
        const auto isWanted = [kind = kind, field = field](const EntryProblem &problem) {
            return problem.kind == kind && problem.field == QString::fromUtf16(field) && !problem.text.isEmpty();
        };
        EXPECT_TRUE(std::any_of(problems.begin(), problems.end(), isWanted))
            << problemName(kind).toStdString() << " in " << toStd(field);
        entry.kind = ReportEntry::Kind::Standard;
        EXPECT_TRUE(check.problems(entry).isEmpty());
        EXPECT_FALSE(check.hasProblem(entry));
    }
}

TEST(ReportGridTest, ProblemsFollowTheChangesAndAreFoundInBothDirections)
{
    ellery::SteamGen steamGen;
    const DefectList defects = DefectList::standard();
    const EntryCheck check(steamGen, defects);
    tarnwick::RecordingPrompts prompts;
    ReportDocument document;
    ReportGrid grid(document, &check, prompts);
    document.changed = [&grid](int entry) { grid.noteChanged(entry); };
    document.setReport(reportOf(4));
    EXPECT_EQ(grid.problemCount(), 4);
    document.change(u"Header"_s, {0, 2}, [](ReportEntry &entry) { entry.kind = ReportEntry::Kind::Header; });
    EXPECT_EQ(grid.problemCount(), 2);
    EXPECT_EQ(grid.nextProblem(1, true), 3);
    EXPECT_EQ(grid.nextProblem(3, true), 1);
    EXPECT_EQ(grid.nextProblem(1, false), 3);
    EXPECT_FALSE(grid.whyNotEditable(0, 3).isEmpty());
    EXPECT_FALSE(grid.tip(1, ReportGrid::columnOf(u"analyst_id")).isEmpty());
    EXPECT_FALSE(grid.setText(1, ReportGrid::columnOf(u"row"), u"none"_s));
    EXPECT_EQ(prompts.entries().size(), 1);
    document.undo();
    EXPECT_EQ(grid.problemCount(), 4);
}

#include <algorithm>
#include <db/ReportRows.h>
#include <results/history/HistoryList.h>
#include <support/DatabaseFixture.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using results::HistoryList;
using results::HistorySort;
using results::OutageMode;
using tarnwick::Answer;
using Kind = tarnwick::RecordingPrompts::Entry::Kind;

namespace {

struct Given
{
    int row;
    int col;
    const char16_t *outage;
    const char16_t *defect;
    double volts = 0; ///< 0: no measurement
    int percent = 0;
};

class HistoryListTest : public support::DatabaseTest
{
protected:
    HistoryListTest()
    {
        project.folder = folder.path();
        project.site.siteCode = u"TMC"_s;
        project.site.compCode = u"SGA"_s;
    }

    void store(std::initializer_list<Given> given)
    {
        db::ReportWriter writer(database());
        for (const Given &one : given) {
            brannock::ReportEntry entry;
            entry.site = project.site;
            entry.row = one.row;
            entry.col = one.col;
            entry.outage = QString::fromUtf16(one.outage);
            entry.defect = QString::fromUtf16(one.defect);
            entry.operType = u"PRI"_s;
            entry.analystId = entry.operatorId = u"A"_s;
            entry.calNumber = 1;
            entry.location = {u"TSH"_s, 1.5, 7, 0};
            if (one.volts > 0)
                entry.meas = {u"Vpp"_s, one.volts, 0, 90, one.percent};
            writer.add(entry);
        }
    }

    bool fetch() { return list.fetchFilters() && list.fetch() == tarnwick::Outcome::Done; }

    /// "row outage defect", the kept entries in the present order.
    static QStringList kept(const HistoryList &list)
    {
        QStringList lines;
        for (int i = 0; i < list.count(); ++i) {
            const brannock::HistoryEntry entry = list.entryAt(i);
            if (list.isKept(i))
                lines.append(u"%1 %2 %3"_s.arg(entry.row).arg(entry.outage, entry.defect));
        }
        return lines;
    }
    static QString joined(const HistoryList &list) { return kept(list).join(u", "_s); }

    brannock::Project project;
    results::ArvoHistoryOptions options;
    HistoryList list{session, project, options};
};

TEST_F(HistoryListTest, NumbersTubesAndOutagesAndKeepsTheLatestOfEachTube)
{
    store({{1, 1, u"1R10", u"DNT", 2.0},
           {1, 1, u"1R12", u"DNT", 3.0},
           {1, 1, u"1R12", u"DNT", 5.0},
           {1, 2, u"1r10", u"DNG", 1.0},
           {2, 1, u"1R10", u"VOL", 0.7, 30},
           {2, 1, u"1R12", u"NDD"}});
    ASSERT_TRUE(fetch());
    EXPECT_TRUE(prompts.lastStatus().startsWith(u"Fetch time="_s));
    EXPECT_EQ(joined(list), u"1 1R12 DNT, 1 1R12 DNT, 1 1r10 DNG, 2 1R12 NDD");
    QStringList numbers;
    for (int i = 0; i < list.count(); ++i)
        numbers.append(u"%1/%2"_s.arg(list.rowAt(i).tube).arg(list.rowAt(i).rank));
    EXPECT_EQ(numbers.join(u' '), u"0/0 0/0 0/1 1/0 2/0 2/1");
    EXPECT_EQ(list.counterText(), u"      4 of 6");
    EXPECT_EQ(list.caption(), u"History ARVO - Site: TMC Comp: SGA");

    const auto with = [&](OutageMode mode, const QStringList &outages) {
        list.choices().mode = mode;
        for (results::OutageChoice &choice : list.choices().outages)
            choice.keep = outages.contains(choice.outage);
        list.applyFilter();
        return joined(list);
    };
    EXPECT_EQ(with(OutageMode::LatestSelected, {u"1R10"_s}), u"1 1R10 DNT, 1 1r10 DNG, 2 1R10 VOL");
    EXPECT_EQ(with(OutageMode::LatestSelected, {}), u"");
    EXPECT_EQ(with(OutageMode::AllSelected, {u"1R12"_s}), u"1 1R12 DNT, 1 1R12 DNT, 2 1R12 NDD");
    EXPECT_EQ(with(OutageMode::All, {}).count(u','), 5);

    // Thresholds: single precision counts as the decimal number it shows; an empty value counts as 0.
    for (results::DefectChoice &choice : list.choices().defects) {
        choice.keep = choice.code != u"DNG";
        choice.volts = choice.code == u"VOL" ? 0.7 : choice.code == u"NDD" ? 0 : 3;
        choice.percent = choice.code == u"VOL" ? 30 : -1;
    }
    list.applyFilter();
    EXPECT_EQ(joined(list), u"1 1R12 DNT, 1 1R12 DNT, 2 1R12 NDD, 2 1R10 VOL");
    EXPECT_EQ(list.choices().codesText(), u"DNT volts >= 3.00, NDD volts >= 0.00, VOL volts >= 0.70 pcnt >= 30%");
    list.choices().defects.removeLast();
    list.applyFilter();
    EXPECT_EQ(joined(list), u"1 1R12 DNT, 1 1R12 DNT, 2 1R12 NDD") << "a code that is not in the list";
}

TEST_F(HistoryListTest, ReplacesTheLocationByAnExtentAndReadsNulls)
{
    store({{3, 4, u"R1", u"DNT", 1.0}, {3, 5, u"R1", u"DNT", 1.0}});
    execute(u"UPDATE report SET from_land = '01H', from_off = 2, to_land = '02H', to_off = -1, loc_dist = 9 "
            u"WHERE col = 4"_s);
    execute(u"UPDATE report SET loc_land = Null, defect = Null, volts = Null, phase = Null, pcnt = Null, "
            u"probe_size = Null, entry_time = #3/4/1885# WHERE col = 5"_s);
    ASSERT_TRUE(fetch());
    EXPECT_EQ(list.cells(0).mid(7, 2).join(u'|'), u"01H +2.00|TO 02H -1.00");
    const brannock::HistoryEntry bare = list.entryAt(1);
    EXPECT_EQ(bare.entryTime.toIso(), u"1885-03-04T00:00:00");
    EXPECT_FALSE(bare.location.isValid() || bare.to.isValid() || !bare.defect.isEmpty() || bare.volts != 0);
    EXPECT_TRUE(list.isKept(1)) << "an empty code is in the list like any other";
    EXPECT_EQ(HistoryList::columnTitles(project.steamGen).size(), list.cells(1).size());
}

TEST_F(HistoryListTest, SortsStably)
{
    store({{1, 9, u"R1", u"VOL", 2.0, 10},
           {1, 2, u"R1", u"dnt", 7.0},
           {2, 2, u"R1", u"DNT", 2.0},
           {3, 1, u"R1", u"AAA"}});
    ASSERT_TRUE(fetch());
    const auto columns = [&](HistorySort sort) {
        list.sortBy(sort);
        QStringList places;
        for (int i = 0; i < list.count(); ++i)
            places.append(u"%1-%2"_s.arg(list.rowAt(i).row).arg(list.rowAt(i).col));
        return places.join(u' ');
    };
    EXPECT_EQ(columns(HistorySort::Tube), u"1-2 1-9 2-2 3-1");
    EXPECT_EQ(columns(HistorySort::Column), u"3-1 1-2 2-2 1-9");
    EXPECT_EQ(columns(HistorySort::Indication), u"3-1 1-2 2-2 1-9");
    EXPECT_EQ(columns(HistorySort::Volts), u"1-2 1-9 2-2 3-1");
    EXPECT_EQ(columns(HistorySort::Percent), u"1-9 1-2 2-2 3-1");
    EXPECT_EQ(columns(HistorySort::Fetched), u"1-2 1-9 2-2 3-1");
    EXPECT_TRUE(prompts.texts(Kind::Status).contains(u"Sort by volts."_s));
    EXPECT_TRUE(prompts.texts(Kind::Status).contains(u"Done sorting history."_s));
}

TEST_F(HistoryListTest, EditedEntriesKeepTheirMarkAndChangesCanBeUndone)
{
    store({{1, 1, u"R1", u"DNT", 2.0}, {1, 2, u"R1", u"DNG", 3.0}});
    ASSERT_TRUE(fetch());
    brannock::HistoryEntry entry = list.entryAt(0);
    entry.defect = u"WAR"_s;
    list.edit(0, entry);
    list.setKept(1, false);
    EXPECT_EQ(list.kept(), 1);
    list.choices().defects.clear();
    list.applyFilter();
    EXPECT_EQ(joined(list), u"1 R1 WAR");
    EXPECT_EQ(list.undo(), 1);
    EXPECT_FALSE(list.isKept(1)) << "by the filter of now";
    EXPECT_EQ(list.undo(), 0);
    EXPECT_EQ(list.entryAt(0).defect, u"DNT");
    EXPECT_FALSE(list.isEdited(0) || list.canUndo());
    EXPECT_EQ(list.undo(), -1);
}

TEST_F(HistoryListTest, ADraftRepeatsTheEditsOnEntriesThatAreReadAgain)
{
    store({{1, 1, u"R1", u"DNT", 2.0}, {1, 2, u"R1", u"DNG", 3.0}, {2, 1, u"R1", u"DNT", 9.0}});
    ASSERT_TRUE(fetch());
    EXPECT_TRUE(list.draft().isEmpty());
    const auto setDefect = [this](int place, const QString &code) {
        brannock::HistoryEntry entry = list.entryAt(place);
        entry.defect = code;
        list.edit(place, entry);
    };
    list.choices().mode = OutageMode::AllSelected;
    setDefect(0, u"WAR"_s);
    setDefect(1, u"SCC"_s);
    list.setKept(2, false);
    const QByteArray draft = list.draft();
    ASSERT_TRUE(list.saveAs(folder.path(u"project.hst"_s)));
    EXPECT_TRUE(list.draft().isEmpty());

    // Meanwhile an entry is added before these, and one that was edited is another.
    store({{0, 1, u"R1", u"DNT", 1.0}});
    execute(u"UPDATE report SET volts = 5 WHERE row = 1 AND col = 2"_s);
    results::ArvoHistoryOptions fresh;
    HistoryList again(session, project, fresh);
    again.restoreDraft(draft);
    EXPECT_EQ(prompts.entries().last().text, u"1 of 3 changes were not restored, because their entries are not there "
                                             u"any more:\n\tROW 1 COL 2 R1 SCC");
    EXPECT_EQ(joined(again), u"0 R1 DNT, 1 R1 WAR, 1 R1 DNG");
    EXPECT_EQ(fresh.filter.mode, OutageMode::AllSelected);
    EXPECT_TRUE(again.isChanged() && again.canUndo());
    again.undo();
    again.undo();
    EXPECT_EQ(joined(again), u"0 R1 DNT, 1 R1 DNT, 1 R1 DNG, 2 R1 DNT");
    for (qsizetype size = 0; size < draft.size(); ++size)
        ASSERT_THROW(again.restoreDraft(draft.first(size)), tarnwick::Error) << size;
    session.close();
    EXPECT_THROW(again.restoreDraft(draft), tarnwick::Cancelled) << "kept for later";
}

TEST_F(HistoryListTest, StoresTheKeptEntriesAndLoadsThemAgain)
{
    store({{1, 1, u"R1", u"DNT", 2.0}, {1, 1, u"R2", u"DNT", 4.5}, {2, 1, u"R2", u"DNT", 9.0}});
    ASSERT_TRUE(fetch());
    list.setKept(0, true);
    brannock::HistoryEntry entry = list.entryAt(0);
    entry.percent = 12;
    list.edit(0, entry);
    list.sortBy(HistorySort::Volts);
    const QString file = folder.path(u"project.hst"_s);
    ASSERT_TRUE(list.saveAs(file));
    EXPECT_EQ(prompts.lastStatus(), QString(u"History stored to \""_s + file + u"\"."_s));
    EXPECT_FALSE(list.isChanged());
    const QByteArray text = tarnwick::readFile(file);
    EXPECT_TRUE(text.contains("!outages\tlatest of R1, R2\n!codes\tDNT\n")) << text.constData();
    EXPECT_TRUE(text.contains(QByteArray("!database\t" + path.toUtf8() + "\n")));

    results::ArvoHistoryOptions fresh;
    HistoryList loaded(session, project, fresh);
    ASSERT_TRUE(loaded.open(file));
    EXPECT_EQ(loaded.caption(), QString(u"History File - "_s + file));
    EXPECT_EQ(joined(loaded), u"2 R2 DNT, 1 R2 DNT");
    EXPECT_TRUE(loaded.isEdited(1));
    EXPECT_EQ(loaded.entryAt(1).percent, 12);
    loaded.choices().outages[0].keep = false;
    loaded.setKept(0, false);
    EXPECT_EQ(loaded.undo(), 0);
    EXPECT_EQ(loaded.kept(), 2) << "a filter that was not applied to the file has no effect";
    loaded.choices().outages[0].keep = true;
    ASSERT_TRUE(loaded.saveAs(file));
    EXPECT_EQ(tarnwick::readFile(file), text) << "nor on the heading";
    loaded.choices().outages[0].keep = false;
    loaded.applyFilter();
    EXPECT_EQ(joined(loaded), u"1 R2 DNT") << "only the edited entry stays";

    // Cut anywhere, or of a later version: refused, and the list stays.
    for (qsizetype size = text.size() - 1; size >= 0; --size) {
        folder.write(u"cut.hst"_s, text.first(size));
        ASSERT_FALSE(loaded.open(folder.path(u"cut.hst"_s))) << size;
    }
    folder.write(u"cut.hst"_s, QByteArray(text).replace("!version\t2", "!version\t9"));
    EXPECT_FALSE(loaded.open(folder.path(u"cut.hst"_s)));
    EXPECT_EQ(loaded.count(), 2);

    EXPECT_TRUE(list.save()) << "the folder is made";
    EXPECT_EQ(options.historyFile, u"project.hst") << "of saveAs()";

    EXPECT_FALSE(loaded.saveAs(folder.path(u"project.hst/none.hst"_s)));
    prompts.answerWith({Answer::No, Answer::Yes, Answer::Cancel, Answer::No});
    loaded.clear();
    EXPECT_EQ(loaded.count(), 2);
    loaded.clear();
    EXPECT_EQ(loaded.counterText(), u"      0 of 0");
    EXPECT_FALSE(list.isChanged());
    list.applyFilter();
    EXPECT_FALSE(list.closeWithCancel());
    EXPECT_TRUE(list.closeWithCancel());
}

TEST_F(HistoryListTest, ACancelledFetchChangesNothing)
{
    struct Stop : tarnwick::Progress
    {
        void report(qint64, qint64, const QString &) override {}
        bool cancelled() override { return true; }
    } stop;
    store({{1, 1, u"R1", u"DNT", 2.0}});
    HistoryList stopped(session, project, options, &stop);
    EXPECT_EQ(stopped.fetch(), tarnwick::Outcome::Cancelled);
    EXPECT_EQ(prompts.lastStatus(), u"Fetching history was cancelled.");
    EXPECT_EQ(stopped.count(), 0);
    const QString file = folder.path(u"a.hst"_s);
    ASSERT_TRUE(list.fetchFilters() && list.fetch() == tarnwick::Outcome::Done && list.saveAs(file));
    EXPECT_FALSE(stopped.open(file));
    EXPECT_EQ(prompts.lastStatus(), u"Loading the history file was cancelled.");
    list.setProgress(&stop);
    EXPECT_FALSE(list.saveAs(folder.path(u"b.hst"_s)));
    EXPECT_FALSE(QFile::exists(folder.path(u"b.hst"_s)));
    list.setProgress(nullptr);
    EXPECT_TRUE(prompts.texts(Kind::Error).isEmpty());
    session.close();
    EXPECT_FALSE(list.fetchFilters());
    EXPECT_EQ(list.fetch(), tarnwick::Outcome::Failed);
    EXPECT_EQ(prompts.texts(Kind::Error).size(), 2);
}

TEST_F(HistoryListTest, OptionsComeBack)
{
    options.historyFile = u"history\\a.hst"_s;
    options.filter = {OutageMode::All, {{u"R1"_s, false}}, {{u"DNT"_s, 7, 1.5, 20, true}}};
    const QString file = folder.path(u"history.opt"_s);
    options.storeTo(file);
    results::ArvoHistoryOptions loaded;
    loaded.loadFrom(file);
    EXPECT_EQ(loaded.historyFile, options.historyFile);
    EXPECT_EQ(loaded.filter.mode, options.filter.mode);
    EXPECT_EQ(loaded.filter.outages, options.filter.outages);
    EXPECT_EQ(loaded.filter.defects, options.filter.defects);
    static_assert(sizeof(results::HistoryRow) + sizeof(quint32) < 150,
                  "memory of an entry, with its place in the order");
}

} // namespace

#include "TestHost.h"

#include <plans/BoxFill.h>
#include <plans/MapUpdate.h>
#include <plans/PcntFill.h>
#include <plans/QueryFill.h>
#include <plans/TubeText.h>

using namespace Qt::StringLiterals;

namespace plans {

TEST(MapLegend, LaterEntriesShowWhereEntriesOverlap)
{
    TestHost host(1, 5);
    host.entries.addEntry(fixed({0, 1, 2}), true);
    host.entries.addEntry(fixed({2, 3}), true);
    EXPECT_EQ(host.picture(), u"AABB."_s);
    EXPECT_EQ(host.entries.entry(0).paintedCount, 2);
    EXPECT_EQ(host.entries.entry(1).paintedCount, 2);
    host.entries.moveEntry(0, 99);
    EXPECT_EQ(host.picture(), u"AAAB."_s);
    host.entries.setShown(1, false);
    EXPECT_EQ(host.picture(), u"..BB."_s);
    EXPECT_EQ(host.entries.entry(1).paintedCount, 0);
    host.entries.deleteEntry(0);
    EXPECT_EQ(host.picture(), u"....."_s);
}

TEST(MapLegend, LettersEndWithTheAlphabet)
{
    TestHost host(1, 30);
    for (int i = 0; i < 27; ++i)
        host.entries.addEntry(fixed({i}), true);
    EXPECT_EQ(host.entries.entry(0).symbol, u'A');
    EXPECT_EQ(host.entries.entry(25).symbol, u'Z');
    EXPECT_EQ(host.entries.entry(26).symbol, u'A');
}

TEST(MapLegend, MovingShiftsTheEntriesBetween)
{
    TestHost host(1, 5);
    for (int i = 0; i < 5; ++i)
        host.entries.addEntry(fixed({i}), true);
    const auto order = [&host] {
        QString text;
        for (int i = 0; i < host.entries.count(); ++i)
            text += QChar(host.entries.entry(i).symbol);
        return text;
    };
    host.entries.moveEntry(1, 3);
    EXPECT_EQ(order(), u"ACDBE"_s);
    host.entries.moveEntry(4, -7);
    EXPECT_EQ(order(), u"EACDB"_s);
}

TEST(MapLegend, AllSectionsMarksRowAndColumnInEverySection)
{
    TestHost host(2, 2, 3);
    auto fill = fixed({host.tube(1, 2, 1)});
    fill->allSections = true;
    host.entries.addEntry(std::move(fill), true);
    EXPECT_EQ(host.picture(), u".A...A...A.."_s);
    EXPECT_EQ(host.entries.entry(0).paintedCount, 3);
    TestHost single(2, 2);
    single.entries.addEntry(fixed({1}), true);
    single.entries.setAllSections(0, true);
    EXPECT_EQ(single.picture(), u".A.."_s);
}

TEST(MapLegend, UpdateComputesEachEntryAfterThoseBeforeIt)
{
    TestHost host(1, 10);
    host.entries.addEntry(fixed({0, 1, 2, 3}), true);
    auto random = std::make_unique<PcntFill>();
    random->parameters = {100, 0, {TubeFilter::EntireMap, TubeFilter::OpenTubesOnly}, true, false, 1};
    random->label = u"rest"_s;
    host.entries.addEntry(std::move(random), true);
    host.entries.addEntry(fixed({9}), true);
    host.entries.updateAll(host);
    EXPECT_EQ(host.picture(), u"AAAABBBBBC"_s);
    EXPECT_EQ(host.entries.entry(1).fillCount, 6);
    EXPECT_EQ(host.entries.entry(1).paintedCount, 5);
    EXPECT_EQ(static_cast<FixedFill &>(host.entries.entry(0)).seen, QList<int>{0});
    EXPECT_EQ(static_cast<FixedFill &>(host.entries.entry(2)).seen, QList<int>{10});
    EXPECT_EQ(host.said.texts(tarnwick::RecordingPrompts::Entry::Kind::Status),
              (QStringList{u"Execute ..."_s, u"Updating entry 1  ..."_s, u"Updating entry 2 rest ..."_s,
                           u"Updating entry 3  ..."_s, u"Done updating map."_s}));
    EXPECT_EQ(host.checkpoints, QStringList{u"Update Map"_s});
    EXPECT_EQ(host.source.quietCalls, (QList<bool>{true, false}));
    EXPECT_EQ(host.busy, 0);
}

namespace {

class FailingFill : public FixedFill
{
public:
    using FixedFill::FixedFill;
    bool compute(MapHost &) override
    {
        tubes.clear();
        throw tarnwick::Error(u"broken"_s);
    }
    std::unique_ptr<MapFill> clone() const override { return std::make_unique<FailingFill>(*this); }
};

/// Wants to stop after some looks.
class Stopping : public tarnwick::Progress
{
public:
    explicit Stopping(int looks)
        : m_looks(looks)
    {
    }
    void report(qint64, qint64, const QString &) override {}
    bool cancelled() override { return --m_looks < 0; }

private:
    int m_looks;
};

} // namespace

TEST(MapLegend, AnUpdateThatFailsOrIsStoppedLeavesTheMapAsItWas)
{
    TestHost host(1, 5);
    auto changing = std::make_unique<FixedFill>(QList<qint32>{0, 1});
    changing->parameters.computed = {3};
    host.entries.addEntry(std::move(changing), true);
    host.entries.addEntry(std::make_unique<FailingFill>(QList<qint32>{2}), true);
    const QString before = host.picture();
    EXPECT_EQ(before, u"AAB.."_s);
    EXPECT_THROW(host.entries.updateAll(host), tarnwick::Error);
    EXPECT_EQ(host.picture(), before);
    EXPECT_EQ(host.busy, 0);
    EXPECT_EQ(host.source.quietCalls, (QList<bool>{true, false}));

    Stopping stopping(1);
    host.entries.updateAll(host, &stopping);
    EXPECT_EQ(host.picture(), before);
    EXPECT_EQ(host.said.lastStatus(), u"Update of the map cancelled."_s);

    EXPECT_THROW(host.entries.replaceEntry(1, FailingFill(QList<qint32>{4}), host), tarnwick::Error);
    EXPECT_EQ(host.picture(), before);
}

TEST(MapUpdate, WarnsBeforeEntriesLoseTheirTubesAndTellsWhatChanged)
{
    using Kind = tarnwick::RecordingPrompts::Entry::Kind;
    TestHost host(2, 5);
    auto box = std::make_unique<BoxFill>();
    box->label = u"box"_s;
    box->tubes = {0, 1};
    host.entries.addEntry(std::move(box), true);
    auto query = std::make_unique<QueryFill>();
    query->label = u"deep.qry"_s;
    query->tubes = {5};
    host.entries.addEntry(std::move(query), true);
    auto other = std::make_unique<FixedFill>(QList<qint32>{3, 4, 6});
    other->parameters.computed = {3, 7};
    other->label = u"other"_s;
    host.entries.addEntry(std::move(other), true);
    host.source.ready = false;
    const auto update = [&host] {
        MapUpdate run(host);
        if (run.confirm() && run.run(nullptr))
            run.tell();
    };

    host.said.answerWith({tarnwick::Answer::Cancel, tarnwick::Answer::Yes, tarnwick::Answer::No});
    const QString before = host.picture();
    update();
    EXPECT_EQ(host.picture(), before);
    EXPECT_TRUE(host.checkpoints.isEmpty());
    const QString asked = host.said.texts(Kind::Question).value(0);
    EXPECT_TRUE(asked.contains(u"    1  box\n"_s) && asked.contains(u"    2  deep.qry\n"_s)) << qPrintable(asked);
    EXPECT_EQ(host.said.lastStatus(), u"Update of the map cancelled."_s);

    update();
    EXPECT_EQ(host.entries.entry(0).tubes, (QList<qint32>{0, 1})) << "left as it was";
    EXPECT_EQ(host.picture(), u"AA.C.B.C.."_s);
    EXPECT_EQ(host.said.lastStatus(), u"Done updating map."_s);
    EXPECT_EQ(
        host.said.texts(Kind::Information),
        QStringList{u"Entries that have other tubes now:\n\n    3  other: 1 tube added (ROW 2 COL 3), 2 tubes removed "
                    u"(ROW 1 COL 5, ROW 2 COL 2)"_s});

    host.said.clear();
    host.said.answerWith({tarnwick::Answer::No});
    update();
    EXPECT_TRUE(host.entries.entry(0).tubes.isEmpty());
    EXPECT_EQ(host.entries.entry(1).tubes, QList<qint32>{5}) << "nothing to compute it from";
    host.said.clear();
    host.said.answerWith({tarnwick::Answer::Yes});
    update();
    EXPECT_TRUE(host.said.texts(Kind::Question).value(0).contains(u"No database is connected"_s));
    EXPECT_TRUE(host.said.texts(Kind::Information).isEmpty()) << "nothing has changed";
}

TEST(MapLegend, DropsTubesThatTheComponentDoesNotHave)
{
    TestHost host(1, 3);
    auto fill = fixed({0, 1});
    fill->tubes = {-1, 0, 3, 2, 70000};
    auto other = fixed({});
    other->tubes = {3};
    MapLegend::Entries entries;
    entries.push_back(std::move(fill));
    entries.push_back(std::move(other));
    for (auto &entry : entries)
        entry->shown = false; // painting would touch them
    host.entries.replaceEntries(std::move(entries));
    EXPECT_EQ(host.entries.dropInvalidTubes(), 4);
    EXPECT_EQ(host.entries.entry(0).tubes, (QList<qint32>{0, 2}));
    EXPECT_EQ(host.entries.dropInvalidTubes(), 0);
}

TEST(MapLegend, TellsOfEveryChange)
{
    TestHost host(1, 3);
    int changes = 0;
    host.entries.changed = [&changes] { ++changes; };
    host.entries.addEntry(fixed({0}), true);
    host.entries.setSymbol(0, u'?', 5, host);
    host.entries.setLabel(0, u"x"_s);
    host.entries.setShown(QList<bool>{false});
    EXPECT_EQ(changes, 4);
    host.entries.moveEntry(0, 0);
    EXPECT_EQ(changes, 4);
}

TEST(TubeText, NamesTubesByTheirLabelsInTheOrderOfTheirAddresses)
{
    TestHost host(2, 2);
    host.record.steamGen.labels[int(ellery::Axis::Row)] = {QString(), u"A,1"_s, u"B"_s};
    const TubeText tabs(host.record.steamGen, TubeText::Form::Tabs);
    EXPECT_EQ(tabs.ofTubes({3, 0, 1}), u"A,1\t1\nA,1\t2\nB\t2\n"_s);

    // Sections only where there are some; each tube once, by the entry that shows there.
    TestHost large(1, 2, 2);
    auto everywhere = fixed({large.tube(1, 2, 0), large.tube(1, 2, 1)});
    everywhere->allSections = true;
    everywhere->label = u" 10% Fill"_s;
    large.entries.addEntry(std::move(everywhere), true);
    large.entries.addEntry(fixed({large.tube(1, 2, 1)}), true);
    large.entries.setLabel(1, u"say \"x\""_s);
    const TubeText csv(large.record.steamGen, TubeText::Form::Csv);
    EXPECT_EQ(csv.ofEntry(large.entries.entry(0)), u"SEC,ROW,COL\r\n0,1,2\r\n1,1,2\r\n"_s);
    EXPECT_EQ(csv.ofMap(large.entries), u"SEC,ROW,COL,SYMBOL,TYPE,DESCRIPTION\r\n0,1,2,A,FIXED,10% Fill\r\n"
                                        u"1,1,2,B,FIXED,\"say \"\"x\"\"\"\r\n"_s);
    large.entries.setShown(1, false);
    EXPECT_TRUE(csv.ofMap(large.entries).endsWith(u"1,1,2,A,FIXED,10% Fill\r\n"_s));
}

} // namespace plans

#include "TestMap.h"

#include <map/FillCommit.h>
#include <map/MapUpdate.h>
#include <map/TubeText.h>
#include <plans/BoxFill.h>
#include <plans/PcntFill.h>
#include <plans/QueryFill.h>

using namespace Qt::StringLiterals;

namespace map {

TEST(EntriesTest, LaterEntriesShowWhereEntriesOverlap)
{
    TestMap host(1, 5);
    host.add(fixed({0, 1, 2}));
    host.add(fixed({2, 3}));
    EXPECT_EQ(host.picture(), u"AABB."_s);
    EXPECT_EQ(host.document.hits(0), 2);
    EXPECT_EQ(host.document.hits(1), 2);
    host.add(fixed({4}));
    host.move(2, -7);
    EXPECT_EQ(host.picture(), u"AABBC"_s);
    EXPECT_EQ(host.entry(0).mark.symbol, ellery::Symbol(u'C'));
    host.move(0, 2);
    host.move(0, 1);
    host.remove(2);
    EXPECT_EQ(host.picture(), u"AAAB."_s);
    host.setShown(1, false);
    EXPECT_EQ(host.picture(), u"..BB."_s);
    EXPECT_EQ(host.document.hits(1), 0);
    host.remove(0);
    EXPECT_EQ(host.picture(), u"....."_s);
}

TEST(EntriesTest, AllSectionsMarksRowAndColumnInEverySection)
{
    TestMap host(2, 2, 3);
    auto fill = fixed({host.tube(1, 1, 2)});
    fill->allSections = true;
    host.add(std::move(fill));
    EXPECT_EQ(host.picture(), u".A...A...A.."_s);
    EXPECT_EQ(host.document.hits(0), 3);
    TestMap single(2, 2);
    single.add(fixed({1}));
    single.document.change(u"Sections"_s, [](MapEdit &edit) { edit.setAllSections(0, true); });
    EXPECT_EQ(single.picture(), u".A.."_s);
}

TEST(EntriesTest, UpdateComputesEachEntryAfterThoseBeforeIt)
{
    TestMap host(1, 10);
    host.add(fixed({0, 1, 2, 3}));
    auto random = std::make_unique<plans::PcntFill>();
    random->parameters = {100, 0, {plans::TubeFilter::EntireMap, plans::TubeFilter::OpenTubesOnly}, true, false, 1};
    random->label = u"rest"_s;
    host.add(std::move(random));
    host.add(fixed({9}));
    MapUpdate(host.document, host.runner).run(nullptr);
    EXPECT_EQ(host.picture(), u"AAAABBBBBC"_s);
    EXPECT_EQ(host.entry(1).fillCount, 6);
    EXPECT_EQ(host.document.hits(1), 5);
    EXPECT_EQ(host.entry(0).fillCount, 0) << "symbols that it saw";
    EXPECT_EQ(host.entry(2).fillCount, 10);
    EXPECT_EQ(host.said.texts(tarnwick::RecordingPrompts::Entry::Kind::Status).size(), 5);
    EXPECT_EQ(host.document.undoLabel(), u"Update Map"_s);
    EXPECT_EQ(host.source.quietCalls, (QList<bool>{true, false}));
}

namespace {

class FailingFill : public FixedFill
{
public:
    using FixedFill::FixedFill;
    plans::FillResult pick(const plans::FillInput &) const override { throw tarnwick::Error(u"broken"_s); }
    std::unique_ptr<plans::MapFill> clone() const override { return std::make_unique<FailingFill>(*this); }
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

TEST(EntriesTest, AnUpdateThatFailsOrIsStoppedLeavesTheMapAsItWas)
{
    TestMap host(1, 5);
    auto changing = std::make_unique<FixedFill>(QList<qint32>{0, 1});
    changing->parameters.computed = {3};
    host.add(std::move(changing));
    host.add(std::make_unique<FailingFill>(QList<qint32>{2}));
    const QString before = host.picture();
    EXPECT_EQ(before, u"AAB.."_s);
    MapUpdate update(host.document, host.runner);
    EXPECT_THROW(update.run(nullptr), tarnwick::Error);
    EXPECT_EQ(host.picture(), before);
    EXPECT_EQ(host.source.quietCalls, (QList<bool>{true, false}));

    Stopping stopping(1);
    EXPECT_FALSE(update.run(&stopping));
    EXPECT_EQ(host.picture(), before);
    EXPECT_EQ(host.said.lastStatus(), u"Update of the map cancelled."_s);

    EXPECT_THROW(changeFill(host.document, host.runner, 1, FailingFill(QList<qint32>{4})), tarnwick::Error);
    EXPECT_EQ(host.picture(), before);
}

TEST(MapUpdateTest, WarnsBeforeEntriesLoseTheirTubesAndTellsWhatChanged)
{
    using Kind = tarnwick::RecordingPrompts::Entry::Kind;
    TestMap host(2, 5);
    auto box = std::make_unique<plans::BoxFill>();
    box->label = u"box"_s;
    box->tubes = {0, 1};
    host.add(std::move(box));
    auto query = std::make_unique<plans::QueryFill>();
    query->label = u"deep.qry"_s;
    query->tubes = {5};
    host.add(std::move(query));
    auto other = std::make_unique<FixedFill>(QList<qint32>{3, 4, 6});
    other->parameters.computed = {3, 7};
    other->label = u"other"_s;
    host.add(std::move(other));
    host.source.ready = false;
    const auto update = [&host] {
        MapUpdate run(host.document, host.runner);
        if (run.confirm() && run.run(nullptr))
            run.report();
    };

    host.said.answerWith({tarnwick::Answer::Cancel, tarnwick::Answer::Yes, tarnwick::Answer::No});
    const QString before = host.picture();
    update();
    EXPECT_EQ(host.picture(), before);
    EXPECT_EQ(host.document.history().count(), 3);
    const QString asked = host.said.texts(Kind::Question).value(0);
    EXPECT_TRUE(asked.contains(u"    1  box\n"_s) && asked.contains(u"    2  deep.qry\n"_s)) << qPrintable(asked);
    EXPECT_EQ(host.said.lastStatus(), u"Update of the map cancelled."_s);

    update();
    EXPECT_EQ(host.entry(0).tubes, (QList<qint32>{0, 1})) << "left as it was";
    EXPECT_EQ(host.picture(), u"AA.C.B.C.."_s);
    EXPECT_EQ(host.said.lastStatus(), u"Done updating map."_s);
    EXPECT_EQ(
        host.said.texts(Kind::Information),
        QStringList{u"Entries whose tubes have changed:\n\n    3  other: 1 tube added (ROW 2 COL 3), 2 tubes removed "
                    u"(ROW 1 COL 5, ROW 2 COL 2)"_s});

    host.said.clear();
    host.said.answerWith({tarnwick::Answer::No});
    update();
    EXPECT_TRUE(host.entry(0).tubes.isEmpty());
    EXPECT_EQ(host.entry(1).tubes, QList<qint32>{5}) << "nothing to compute it from";
    host.said.clear();
    host.said.answerWith({tarnwick::Answer::Yes});
    update();
    EXPECT_TRUE(host.said.texts(Kind::Question).value(0).contains(u"No database is connected"_s));
    EXPECT_TRUE(host.said.texts(Kind::Information).isEmpty()) << "nothing has changed";
}

TEST(TubeTextTest, NamesTubesByTheirLabelsInTheOrderOfTheirAddresses)
{
    TestMap host(2, 2);
    host.record.steamGen.labels[int(ellery::Axis::Row)] = {QString(), u"A,1"_s, u"B"_s};
    const TubeText tabs(host.record.steamGen, TubeText::Form::Tabs);
    EXPECT_EQ(tabs.ofTubes({3, 0, 1}), u"A,1\t1\nA,1\t2\nB\t2\n"_s);

    // Sections only where there are some; each tube once, by the entry that shows there.
    TestMap large(1, 2, 2);
    auto everywhere = fixed({large.tube(0, 1, 2), large.tube(1, 1, 2)});
    everywhere->allSections = true;
    everywhere->label = u" 10% Fill"_s;
    large.add(std::move(everywhere));
    large.add(fixed({large.tube(1, 1, 2)}));
    large.document.change(u"Label"_s, [](MapEdit &edit) { edit.setLabel(1, u"say \"x\""_s); });
    const TubeText csv(large.record.steamGen, TubeText::Form::Csv);
    EXPECT_EQ(csv.ofEntry(large.entry(0)), u"SEC,ROW,COL\r\n0,1,2\r\n1,1,2\r\n"_s);
    EXPECT_EQ(csv.ofMap(large.document.entries()), u"SEC,ROW,COL,SYMBOL,TYPE,DESCRIPTION\r\n0,1,2,A,FIXED,10% Fill\r\n"
                                                   u"1,1,2,B,FIXED,\"say \"\"x\"\"\"\r\n"_s);
    large.setShown(1, false);
    EXPECT_TRUE(csv.ofMap(large.document.entries()).endsWith(u"1,1,2,A,FIXED,10% Fill\r\n"_s));
}

} // namespace map

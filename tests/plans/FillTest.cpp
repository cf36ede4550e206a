#include "TestHost.h"

#include <plans/BoxFill.h>
#include <plans/FillCommit.h>
#include <plans/ListFill.h>
#include <plans/Messages.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace plans {

TEST(FillTypes, StandInTheOrderOfTheToolButtons)
{
    QStringList kinds;
    for (const MapFillType *type : MapFillType::all()) {
        kinds.append(type->key + u'/' + type->name);
        EXPECT_EQ(type->create()->typeKey, type->key);
        EXPECT_EQ(MapFillType::find(type->key), type);
    }
    EXPECT_EQ(kinds.join(u' '), u"RAND FILL/RANDOM QUERY/QUERY LIST FILL/LIST BOX/BOX PATTERN/PATTERN"_s);
    EXPECT_EQ(MapFillType::find(u"rand fill"), nullptr);
}

TEST(TubeFilter, TakesRegionAndSymbolsAndRefusesUnknownNumbers)
{
    TestHost host(1, 3);
    host.tubes().setMark(0, {u'A', 1});
    host.tubes().setSelected(1, true);
    const auto accepted = [&host](qint32 region, qint32 tube) {
        QString text;
        for (int i = 0; i < 3; ++i)
            text += TubeFilter{region, tube}.accepts(host.tubes(), i) ? u'x' : u'.';
        return text;
    };
    EXPECT_EQ(accepted(TubeFilter::EntireMap, TubeFilter::SymbolsAndOpen), u"xxx"_s);
    EXPECT_EQ(accepted(TubeFilter::EntireMap, TubeFilter::SymbolsOnly), u"x.."_s);
    EXPECT_EQ(accepted(TubeFilter::EntireMap, TubeFilter::OpenTubesOnly), u".xx"_s);
    EXPECT_EQ(accepted(TubeFilter::SelectedTubes, TubeFilter::OpenTubesOnly), u".x."_s);
    EXPECT_EQ(accepted(2, TubeFilter::SymbolsAndOpen), u"..."_s);
    EXPECT_EQ(accepted(TubeFilter::EntireMap, 3), u"..."_s);
    EXPECT_EQ(accepted(-1, -1), u"..."_s);
}

TEST(SampleGenerator, IsTheOneThatOldPlansWereDrawnWith)
{
    SampleGenerator generator(1);
    QList<int> values;
    for (int i = 0; i < 5; ++i)
        values.append(generator.next());
    EXPECT_EQ(values, (QList<int>{41, 18467, 6334, 26500, 19169}));
}

TEST(PcntFill, DrawsBySeedInDrawnOrder)
{
    TestHost host(2, 5);
    PcntFill fill;
    fill.parameters = {40, 0, {}, true, false, 1};
    EXPECT_TRUE(fill.compute(host));
    // 41, 18467, 6334, 26500 modulo 10
    EXPECT_THAT(fill.tubes, ElementsAre(1, 7, 4, 0));
    EXPECT_EQ(fill.fillCount, 4);
    const QList<qint32> first = fill.tubes;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_EQ(fill.tubes, first);
    EXPECT_TRUE(host.said.entries().isEmpty());
}

TEST(PcntFill, WritesARandomSeedBackSoThatTheSampleCanBeDrawnAgain)
{
    TestHost host(20, 20);
    PcntFill fill;
    fill.parameters = {25, 0, {}, true, true, 1};
    ASSERT_TRUE(fill.compute(host));
    const QList<qint32> drawn = fill.tubes;
    fill.parameters.randomSeed = false;
    ASSERT_TRUE(fill.compute(host));
    EXPECT_EQ(fill.tubes, drawn);
    EXPECT_EQ(drawn.size(), 100);
}

TEST(PcntFill, TruncatesThePercentage)
{
    TestHost host(3, 5);
    PcntFill fill;
    fill.parameters = {10, 0, {}, true, false, 7};
    fill.compute(host);
    EXPECT_EQ(fill.fillCount, 1);
    host.tubes().setSelection({0, 1, 2, 3, 4, 5, 6, 7, 8});
    fill.parameters.filter.region = TubeFilter::SelectedTubes;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_EQ(fill.fillCount, 0);
    EXPECT_TRUE(host.said.entries().isEmpty());
}

TEST(PcntFill, KeepsAShortSampleAndSaysSo)
{
    TestHost host(1, 4);
    PcntFill fill;
    fill.parameters = {0, 9, {}, false, false, 3};
    EXPECT_TRUE(fill.compute(host));
    EXPECT_EQ(fill.fillCount, 4);
    ASSERT_EQ(host.said.entries().size(), 1);
    EXPECT_EQ(host.said.entries()[0].number, 1089);
}

TEST(PcntFill, CannotReachBeyondTheGeneratorsRange)
{
    TestHost host(331, 100); // 33,100 tubes
    PcntFill fill;
    fill.parameters = {100, 0, {}, true, false, 5};
    EXPECT_TRUE(fill.compute(host));
    EXPECT_LE(fill.fillCount, 32768);
    EXPECT_LT(*std::max_element(fill.tubes.begin(), fill.tubes.end()), 32768);
    EXPECT_EQ(host.said.entries().value(0).number, 1089);
    EXPECT_TRUE(
        host.said.entries().value(1).text.startsWith(u"The sample is drawn from the first 32,768 tubes only."_s));
    EXPECT_EQ(fill.detail(), u"Seed 5"_s);
    host.said.clear();
    fill.parameters.percent = 0;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_TRUE(host.said.entries().isEmpty());
}

TEST(PcntFill, WithoutCandidatesHasNoTubes)
{
    TestHost host;
    PcntFill fill;
    fill.tubes = {1, 2};
    fill.fillCount = 2;
    fill.parameters.filter.region = TubeFilter::SelectedTubes;
    EXPECT_FALSE(fill.compute(host));
    EXPECT_TRUE(fill.tubes.isEmpty());
    EXPECT_EQ(fill.fillCount, 0);
}

TEST(PcntFill, Labels)
{
    PcntFill fill;
    fill.parameters.percent = 10;
    EXPECT_EQ(fill.entryLabel(), u" 10% Fill"_s);
    fill.parameters.percentMode = false;
    fill.parameters.tubeCount = 12;
    EXPECT_EQ(fill.entryLabel(), u"12 Tubes Fill"_s);
    EXPECT_EQ(fill.undoLabel(), u"Random 10% Fill"_s);
}

TEST(ListFill, MarksATubeOnceAndWarnsOfMissingOnes)
{
    TestHost host(2, 2);
    ListFill fill;
    fill.parameters.name = u"sub\\worn.lst"_s;
    for (const auto &[row, col] : {std::pair{2, 1}, {1, 1}, {2, 1}, {9, 9}})
        fill.parameters.entries.append({0, qint16(row), qint16(col), 0, 0, 0});
    EXPECT_TRUE(fill.compute(host));
    EXPECT_THAT(fill.tubes, ElementsAre(host.tube(2, 1), host.tube(1, 1)));
    EXPECT_EQ(fill.fillCount, 4);
    EXPECT_EQ(host.said.entries().value(0).number, 1079);
    EXPECT_EQ(fill.entryLabel(), u"worn.lst"_s);
}

TEST(BoxFill, TakesTheUnselectedTubesAroundInTheOrderReached)
{
    TestHost host(3, 5);
    host.tubes().setSelection({host.tube(2, 2), host.tube(2, 3)});
    BoxFill fill;
    EXPECT_TRUE(fill.compute(host));
    // Around (2, 2) by index first, then what (2, 3) adds; exactly a radius away counts.
    EXPECT_THAT(fill.tubes, ElementsAre(host.tube(1, 2), host.tube(2, 1), host.tube(3, 2), host.tube(1, 3),
                                        host.tube(2, 4), host.tube(3, 3)));
    EXPECT_EQ(fill.fillCount, 6);
    fill.parameters.radius = 0.9;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_TRUE(fill.tubes.isEmpty());
    EXPECT_EQ(fill.entryLabel(), u"Radius 0.900"_s);
}

/// The same tubes in the same order as looking at every pair.
TEST(BoxFill, EqualsThePlainDoubleLoop)
{
    TestHost host(20, 30);
    quint32 state = 1;
    for (int i = 0; i < 60; ++i) {
        state = state * 1664525U + 1013904223U;
        host.tubes().setSelected(int((state >> 8) % 600), true);
    }
    const ellery::SteamGen &sg = host.steamGen();
    for (const double radius : {0.0, 1.0, std::sqrt(2.0), 1.5, 3.0, 12.0, 1000.0, HUGE_VAL, -1.0}) {
        QList<qint32> expected;
        for (const qint32 a : host.tubes().selection()) {
            for (int b = 0; b < sg.numTube(); ++b) {
                const double dx = double(sg[a].x) - double(sg[b].x);
                const double dy = double(sg[a].y) - double(sg[b].y);
                if (!host.tubes().isSelected(b) && std::sqrt(dx * dx + dy * dy) <= radius && !expected.contains(b))
                    expected.append(b);
            }
        }
        BoxFill fill;
        fill.parameters.radius = radius;
        fill.compute(host);
        EXPECT_EQ(fill.tubes, expected) << radius;
    }
}

/// A damaged component file can hold anything.
TEST(BoxFill, LeavesOutTubesWithoutAPlace)
{
    TestHost host;
    QList<ellery::Tube> tubes;
    for (const float x : {0.0F, 1.0F, float(NAN), HUGE_VALF, -HUGE_VALF, 1e30F, 2.0F})
        tubes.append({{0, 1, qint16(tubes.size() + 1)}, x, 5, false});
    host.record.steamGen.setTubes(tubes);
    host.entries.setSteamGen(host.record.steamGen);
    host.tubes().setSelection({1, 2});
    BoxFill fill;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_THAT(fill.tubes, ElementsAre(0, 6));
    fill.parameters.radius = double(NAN);
    EXPECT_TRUE(fill.compute(host));
    EXPECT_TRUE(fill.tubes.isEmpty());
    host.tubes().setSelection({2, 3});
    fill.parameters.radius = HUGE_VAL;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_TRUE(fill.tubes.isEmpty()) << "no selected tube has a place";
}

TEST(PatternFill, TakesARegularGridAndTheEndsOfItsRows)
{
    TestHost host(3, 4);
    PatternFill fill;
    fill.parameters.firstCol = 2;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_THAT(fill.tubes, ElementsAre(host.tube(1, 2), host.tube(1, 4), host.tube(3, 2), host.tube(3, 4)));
    fill.parameters.firstRow = 2;
    fill.parameters.colIncrement = 3;
    fill.parameters.includeFirstTube = true;
    fill.parameters.includeLastTube = true;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_THAT(fill.tubes, ElementsAre(host.tube(2, 1), host.tube(2, 2), host.tube(2, 4)));
    host.tubes().setMark(host.tube(2, 2), {u'X', 0});
    fill.parameters.filter.tube = TubeFilter::OpenTubesOnly;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_EQ(fill.fillCount, 2);
    EXPECT_EQ(fill.entryLabel(), u"Pattern 2x3"_s);
}

TEST(PatternFill, FirstTubeMeansColumnOneNotTheFirstPresent)
{
    TestHost host;
    QList<ellery::Tube> tubes;
    for (const int col : {3, 4, 5})
        tubes.append({{0, 1, qint16(col)}, float(col), 1, false});
    host.record.steamGen.setTubes(tubes);
    host.entries.setSteamGen(host.record.steamGen);
    PatternFill fill;
    fill.parameters.firstCol = 100;
    fill.parameters.includeFirstTube = true;
    EXPECT_TRUE(fill.compute(host));
    EXPECT_TRUE(fill.tubes.isEmpty());
    fill.parameters.rowIncrement = 0;
    EXPECT_FALSE(fill.compute(host));
}

TEST(FillCommit, NewFillIsLabelledComputedAndGetsALetterAfterTheCheckpoint)
{
    TestHost host(1, 4);
    PatternFill working;
    working.symbol = u'D';
    addNewFill(host, working);
    addNewFill(host, working);
    EXPECT_EQ(host.checkpoints, (QStringList{u"Pattern Fill"_s, u"Pattern Fill"_s}));
    EXPECT_EQ(host.legend().entry(0).label, u"Pattern 2x2"_s);
    EXPECT_EQ(host.legend().entry(1).symbol, u'B');
    EXPECT_EQ(host.picture(), u"B.B."_s);
    EXPECT_EQ(host.legend().entry(0).paintedCount, 0);
}

TEST(FillCommit, ChangedFillSeesItsOldTubesOpen)
{
    TestHost host(1, 4);
    PatternFill fill;
    fill.parameters.filter.tube = TubeFilter::OpenTubesOnly;
    addNewFill(host, fill);
    PatternFill changed = fill;
    changed.parameters.colIncrement = 3;
    changed.symbol = u'Q';
    changeFill(host, 0, changed);
    EXPECT_EQ(host.picture(), u"Q..Q"_s);
    EXPECT_EQ(host.legend().entry(0).label, u"Pattern 2x3"_s);
}

} // namespace plans

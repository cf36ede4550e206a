#include "TestBundle.h"

#include <plans/BoxFill.h>
#include <plans/ListFill.h>
#include <plans/Messages.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <support/Marks.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace plans {

TEST(FillTypesTest, StandInTheOrderOfTheToolButtons)
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

TEST(TubeFilterTest, TakesRegionAndSymbolsAndRefusesUnknownNumbers)
{
    TestBundle bundle(1, 3);
    bundle.tubes.setMark(0, markOf(u'A', 1));
    bundle.tubes.setSelected(1, true);
    const auto accepted = [&bundle](qint32 region, qint32 tube) {
        QString text;
        for (int i = 0; i < 3; ++i)
            text += TubeFilter{region, tube}.accepts(bundle.tubes, i) ? u'x' : u'.';
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

TEST(SampleGeneratorTest, IsTheOneThatOldPlansWereDrawnWith)
{
    SampleGenerator generator(1);
    QList<int> values;
    for (int i = 0; i < 5; ++i)
        values.append(generator.next());
    EXPECT_EQ(values, (QList<int>{41, 18467, 6334, 26500, 19169}));
}

TEST(PcntFillTest, DrawsBySeedInDrawnOrder)
{
    TestBundle bundle(2, 5);
    PcntFill fill;
    fill.parameters = {40, 0, {}, true, false, 1};
    bundle.compute(fill);
    // 41, 18467, 6334, 26500 modulo 10
    EXPECT_THAT(fill.tubes, ElementsAre(1, 7, 4, 0));
    EXPECT_EQ(fill.fillCount, 4);
    const QList<qint32> first = fill.tubes;
    bundle.compute(fill);
    EXPECT_EQ(fill.tubes, first);
    EXPECT_TRUE(bundle.remarks.isEmpty());
}

TEST(PcntFillTest, WritesARandomSeedBackSoThatTheSampleCanBeDrawnAgain)
{
    TestBundle bundle(20, 20);
    PcntFill fill;
    fill.parameters = {25, 0, {}, true, true, 1};
    bundle.compute(fill);
    const QList<qint32> drawn = fill.tubes;
    fill.parameters.randomSeed = false;
    bundle.compute(fill);
    EXPECT_EQ(fill.tubes, drawn);
    EXPECT_EQ(drawn.size(), 100);
}

TEST(PcntFillTest, TruncatesThePercentage)
{
    TestBundle bundle(3, 5);
    PcntFill fill;
    fill.parameters = {10, 0, {}, true, false, 7};
    bundle.compute(fill);
    EXPECT_EQ(fill.fillCount, 1);
    bundle.tubes.setSelection({0, 1, 2, 3, 4, 5, 6, 7, 8});
    fill.parameters.filter.region = TubeFilter::SelectedTubes;
    bundle.compute(fill);
    EXPECT_EQ(fill.fillCount, 0);
    EXPECT_TRUE(bundle.remarks.isEmpty());
}

TEST(PcntFillTest, KeepsAShortSampleAndSaysSo)
{
    TestBundle bundle(1, 4);
    PcntFill fill;
    fill.parameters = {0, 9, {}, false, false, 3};
    bundle.compute(fill);
    EXPECT_EQ(fill.fillCount, 4);
    ASSERT_EQ(bundle.remarks.size(), 1);
    EXPECT_EQ(bundle.remarks[0].number, 1089);
}

TEST(PcntFillTest, CannotReachBeyondTheGeneratorsRange)
{
    TestBundle bundle(331, 100); // 33,100 tubes
    PcntFill fill;
    fill.parameters = {100, 0, {}, true, false, 5};
    bundle.compute(fill);
    EXPECT_LE(fill.fillCount, 32768);
    EXPECT_LT(*std::max_element(fill.tubes.begin(), fill.tubes.end()), 32768);
    EXPECT_EQ(bundle.remarks.value(0).number, 1089);
    EXPECT_TRUE(bundle.remarks.value(1).text.startsWith(u"The sample is drawn from the first 32,768 tubes only."_s));
    EXPECT_EQ(fill.detail(), u"Seed 5"_s);
    fill.parameters.percent = 0;
    bundle.compute(fill);
    EXPECT_TRUE(bundle.remarks.isEmpty());
}

TEST(PcntFillTest, WithoutCandidatesHasNoTubes)
{
    TestBundle bundle;
    PcntFill fill;
    fill.tubes = {1, 2};
    fill.fillCount = 2;
    fill.parameters.filter.region = TubeFilter::SelectedTubes;
    bundle.compute(fill);
    EXPECT_TRUE(fill.tubes.isEmpty());
    EXPECT_EQ(fill.fillCount, 0);
}

TEST(PcntFillTest, Labels)
{
    PcntFill fill;
    fill.parameters.percent = 10;
    EXPECT_EQ(fill.entryLabel(), u" 10% Fill"_s);
    fill.parameters.percentMode = false;
    fill.parameters.tubeCount = 12;
    EXPECT_EQ(fill.entryLabel(), u"12 Tubes Fill"_s);
    EXPECT_EQ(fill.undoLabel(), u"Random 10% Fill"_s);
}

TEST(ListFillTest, MarksATubeOnceAndWarnsOfMissingOnes)
{
    TestBundle bundle(2, 2);
    ListFill fill;
    fill.parameters.name = u"sub\\worn.lst"_s;
    for (const auto &[row, col] : {std::pair{2, 1}, {1, 1}, {2, 1}, {9, 9}})
        fill.parameters.entries.append({0, qint16(row), qint16(col), 0, {}});
    bundle.compute(fill);
    EXPECT_THAT(fill.tubes, ElementsAre(bundle.tube(2, 1), bundle.tube(1, 1)));
    EXPECT_EQ(fill.fillCount, 4);
    EXPECT_EQ(bundle.remarks.value(0).number, 1079);
    EXPECT_EQ(fill.entryLabel(), u"worn.lst"_s);
}

TEST(BoxFillTest, TakesTheUnselectedTubesAroundInTheOrderReached)
{
    TestBundle bundle(3, 5);
    bundle.tubes.setSelection({bundle.tube(2, 2), bundle.tube(2, 3)});
    BoxFill fill;
    bundle.compute(fill);
    // Around (2, 2) by index first, then what (2, 3) adds; exactly a radius away counts.
    EXPECT_THAT(fill.tubes, ElementsAre(bundle.tube(1, 2), bundle.tube(2, 1), bundle.tube(3, 2), bundle.tube(1, 3),
                                        bundle.tube(2, 4), bundle.tube(3, 3)));
    EXPECT_EQ(fill.fillCount, 6);
    fill.parameters.radius = 0.9;
    bundle.compute(fill);
    EXPECT_TRUE(fill.tubes.isEmpty());
    EXPECT_EQ(fill.entryLabel(), u"Radius 0.900"_s);
}

/// The same tubes in the same order as looking at every pair.
TEST(BoxFillTest, EqualsThePlainDoubleLoop)
{
    TestBundle bundle(20, 30);
    quint32 state = 1;
    for (int i = 0; i < 60; ++i) {
        state = state * 1664525U + 1013904223U;
        bundle.tubes.setSelected(int((state >> 8) % 600), true);
    }
    const ellery::SteamGen &sg = bundle.component;
    for (const double radius : {0.0, 1.0, std::sqrt(2.0), 1.5, 3.0, 12.0, 1000.0, HUGE_VAL, -1.0}) {
        QList<qint32> expected;
        for (const qint32 a : bundle.tubes.selection()) {
            for (int b = 0; b < sg.numTube(); ++b) {
                const double dx = double(sg[a].x) - double(sg[b].x);
                const double dy = double(sg[a].y) - double(sg[b].y);
                if (!bundle.tubes.isSelected(b) && std::sqrt(dx * dx + dy * dy) <= radius && !expected.contains(b))
                    expected.append(b);
            }
        }
        BoxFill fill;
        fill.parameters.radius = radius;
        bundle.compute(fill);
        EXPECT_EQ(fill.tubes, expected) << radius;
    }
}

/// A damaged component file can hold anything.
TEST(BoxFillTest, LeavesOutTubesWithoutAPlace)
{
    TestBundle bundle;
    QList<ellery::Tube> tubes;
    for (const float x : {0.0F, 1.0F, float(NAN), HUGE_VALF, -HUGE_VALF, 1e30F, 2.0F})
        tubes.append({{0, 1, qint16(tubes.size() + 1)}, x, 5, false});
    bundle.setTubes(tubes);
    bundle.tubes.setSelection({1, 2});
    BoxFill fill;
    bundle.compute(fill);
    EXPECT_THAT(fill.tubes, ElementsAre(0, 6));
    fill.parameters.radius = double(NAN);
    bundle.compute(fill);
    EXPECT_TRUE(fill.tubes.isEmpty());
    bundle.tubes.setSelection({2, 3});
    fill.parameters.radius = HUGE_VAL;
    bundle.compute(fill);
    EXPECT_TRUE(fill.tubes.isEmpty()) << "no selected tube has a place";
}

TEST(PatternFillTest, TakesARegularGridAndTheEndsOfItsRows)
{
    TestBundle bundle(3, 4);
    PatternFill fill;
    fill.parameters.firstCol = 2;
    bundle.compute(fill);
    EXPECT_THAT(fill.tubes, ElementsAre(bundle.tube(1, 2), bundle.tube(1, 4), bundle.tube(3, 2), bundle.tube(3, 4)));
    fill.parameters.firstRow = 2;
    fill.parameters.colIncrement = 3;
    fill.parameters.includeFirstTube = true;
    fill.parameters.includeLastTube = true;
    bundle.compute(fill);
    EXPECT_THAT(fill.tubes, ElementsAre(bundle.tube(2, 1), bundle.tube(2, 2), bundle.tube(2, 4)));
    bundle.tubes.setMark(bundle.tube(2, 2), markOf(u'X', 0));
    fill.parameters.filter.tube = TubeFilter::OpenTubesOnly;
    bundle.compute(fill);
    EXPECT_EQ(fill.fillCount, 2);
    EXPECT_EQ(fill.entryLabel(), u"Pattern 2x3"_s);
}

TEST(PatternFillTest, FirstTubeMeansColumnOneNotTheFirstPresent)
{
    TestBundle bundle;
    QList<ellery::Tube> tubes;
    for (const int col : {3, 4, 5})
        tubes.append({{0, 1, qint16(col)}, float(col), 1, false});
    bundle.setTubes(tubes);
    PatternFill fill;
    fill.parameters.firstCol = 100;
    fill.parameters.includeFirstTube = true;
    bundle.compute(fill);
    EXPECT_TRUE(fill.tubes.isEmpty());
    fill.parameters.rowIncrement = 0;
    bundle.compute(fill);
}

} // namespace plans

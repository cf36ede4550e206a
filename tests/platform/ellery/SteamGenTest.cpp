#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>
#include <gmock/gmock.h>
#include <support/Marks.h>

using namespace Qt::StringLiterals;
using ellery::Axis;
using ellery::SelectMode;
using ellery::SteamGen;
using ellery::Tube;
using ellery::TubeStates;
using testing::ElementsAre;

namespace {

Tube tube(int sec, int row, int col)
{
    Tube t;
    t.address = {qint16(sec), qint16(row), qint16(col)};
    return t;
}

SteamGen plain()
{
    SteamGen gen;
    gen.setTubes({tube(0, 2, 1), tube(0, 1, 2), tube(0, 1, 1), tube(0, 12, 47)});
    return gen;
}

SteamGen sectioned()
{
    SteamGen gen;
    gen.labels[int(Axis::Sec)] = {QString(), u"A"_s, u"B-1"_s};
    gen.labels[int(Axis::Row)] = {QString(), u"1"_s, u"2"_s, u"R3"_s};
    gen.setTubes({tube(2, 3, 5), tube(1, 3, 5), tube(1, 1, 5)});
    return gen;
}

TEST(SteamGenTest, FindsTubesByAddressOnly)
{
    const SteamGen gen = plain();
    EXPECT_EQ(gen.findTube({0, 1, 2}), 1);
    EXPECT_EQ(gen.findTube({1, 2, 1}), -1);
    EXPECT_EQ(gen.findTube({0, -1, 1}), -1);
    EXPECT_EQ(gen.findTube(ellery::TubeAddress::of(0, 65536 + 1, 2)), -1) << "a number must not be cut to 16 bits";
    EXPECT_THAT(gen.sortRowCol(), ElementsAre(2, 1, 0, 3));
    EXPECT_EQ(gen.maxNumber(Axis::Col), 47);
    EXPECT_EQ(SteamGen().maxNumber(Axis::Row), -1);
}

TEST(TubeStatesTest, CountsFollowEveryChange)
{
    TubeStates tubes(4);
    tubes.setMark(0, markOf(u'A', 0xFF));
    tubes.setMark(0, markOf(u'B', 0xFF));
    tubes.setMark(2, markOf(u'C', 0xFF));
    EXPECT_EQ(tubes.symbolCount(), 2);
    EXPECT_EQ(tubes.openCount(), 2);
    tubes.setMark(0, {});
    EXPECT_EQ(tubes.symbolCount(), 1);
    tubes.clearMarks();
    EXPECT_EQ(tubes.openCount(), 4);

    tubes.setSelection({3, 1, 1, 99, -1});
    EXPECT_EQ(tubes.selectedCount(), 2);
    EXPECT_THAT(tubes.selection(), ElementsAre(1, 3));
    tubes.setSelected(3, false);
    tubes.setSelected(3, false);
    EXPECT_EQ(tubes.selectedCount(), 1);
    tubes.select({0, 1}, SelectMode::Toggle);
    EXPECT_THAT(tubes.selection(), ElementsAre(0));
    tubes.select({2, 3}, SelectMode::Add);
    tubes.select({0, 3}, SelectMode::Remove);
    EXPECT_THAT(tubes.selection(), ElementsAre(2));
}

TEST(SteamGenTest, NumbersAreTheirOwnLabelsUnlessThereAreSome)
{
    const SteamGen gen = plain();
    EXPECT_FALSE(gen.hasSections());
    EXPECT_EQ(gen.labelList(Axis::Sec), QStringList{u"0"_s});
    EXPECT_EQ(gen.labelList(Axis::Leg), (QStringList{u"OUTLET"_s, u"INLET"_s, u"UBEND"_s}));
    EXPECT_EQ(gen.stringToRow(u" 0047 "), 47);
    EXPECT_EQ(gen.stringToCol(u"4.5"), -1);
    EXPECT_EQ(gen.stringToSec(u""), -1);
    EXPECT_EQ(gen.stringToRow(u"-3"), -1);

    SteamGen labelled = sectioned();
    EXPECT_TRUE(labelled.hasSections());
    EXPECT_EQ(labelled.numSection(), 3);
    EXPECT_EQ(labelled.stringToSec(u" b-1"), 2);
    EXPECT_EQ(labelled.stringToRow(u"3"), -1) << "3 is called R3 here";
    EXPECT_EQ(labelled.tubeLabel(Axis::Row, 7), QString());
    EXPECT_EQ(labelled.labelList(Axis::Sec), (QStringList{QString(), u"A"_s, u"B-1"_s}));
    labelled.labels[int(Axis::Sec)][1] = u"C"_s;
    EXPECT_EQ(labelled.stringToSec(u"C"), 1) << "a changed list counts at once";
    EXPECT_EQ(labelled.stringToSec(u"A"), -1);
}

TEST(SteamGenTest, NamesAndTypedAddressesAgree)
{
    const SteamGen gen = plain();
    EXPECT_EQ(gen.tubeName({0, 12, 47}), u"ROW 12 COL 47");
    for (const QStringView text : {u"12 47", u"12,47", u"12-47", u" 12 / 47", u"R12 C47", u"c47 r12", u"ROW 12 COL 47",
                                   u"row12col 47", u"r=12, c=47"}) {
        EXPECT_EQ(gen.parseTube(text), text == QStringView(u"row12col 47") ? -1 : 3) << text.toString().toStdString();
    }
    for (const QStringView text : {u"", u"12", u"12 48", u"1 12 47", u"12 x", u"R12 R47"})
        EXPECT_EQ(gen.parseTube(text), -1) << text.toString().toStdString();

    const SteamGen labelled = sectioned();
    EXPECT_EQ(labelled.tubeName({2, 3, 5}), u"SEC B-1 ROW R3 COL 5");
    EXPECT_EQ(labelled.parseTube(u"B-1 R3 5"), 0);
    EXPECT_EQ(labelled.parseTube(u"A-R3-5"), 1);
    EXPECT_EQ(labelled.parseTube(labelled.tubeName({2, 3, 5})), 0);
    EXPECT_EQ(labelled.parseTube(u"R3 5"), -1) << "the section is needed";
}

TEST(LandmarksTest, LongerBendsMoveTheOutletSide)
{
    ellery::Landmark bar;
    bar.pos = 400;
    bar.leg = 2;
    bar.angle = 45;
    ellery::Landmark outlet;
    outlet.pos = 800;
    outlet.leg = 0;
    ellery::Landmark inlet;
    inlet.pos = 20;
    inlet.leg = 1;
    const Tube row11 = tube(0, 11, 1);
    EXPECT_FLOAT_EQ(bar.posFor(row11, 4), 410);
    EXPECT_FLOAT_EQ(outlet.posFor(row11, 4), 840);
    EXPECT_FLOAT_EQ(inlet.posFor(row11, 4), 20);
    outlet.setDist(tube(0, 1, 1), 4);
    EXPECT_FLOAT_EQ(outlet.pos, 800) << "row 1 is what positions are given for";

    SteamGen gen = plain();
    ellery::LandmarkSet low;
    low.lastRow = 10;
    low.landmarks = {bar, outlet};
    low.landmarks[0].name = u"AV1"_s;
    gen.landmarkSets = {low};
    EXPECT_EQ(gen.getLandmarkSet(0)->find(u"AV1"), 0);
    EXPECT_EQ(gen.getLandmarkSet(0)->find(u"av1"), -1);
    EXPECT_EQ(gen.getLandmarkSet(3), nullptr) << "no set holds for row 12";
    EXPECT_EQ(gen.getLandmarkSet(-1), nullptr);
}

} // namespace

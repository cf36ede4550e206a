#include <brannock/paint/MapScene.h>
#include <brannock/paint/TubesheetOutline.h>
#include <cmath>
#include <gmock/gmock.h>
#include <support/Marks.h>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;

namespace {

using namespace brannock;
using testing::ElementsAre;

TEST(MapSceneTest, UpdateNamesTheTubesThatLookDifferent)
{
    ellery::SteamGen steamGen = sample::block(5, 5);
    ellery::TubeStates tubes(steamGen.numTube());
    MapScene scene(steamGen, tubes);
    EXPECT_TRUE(scene.update(tubes).tubes.isEmpty());

    tubes.setSelected(3, true);
    tubes.setSelected(9, true);
    MapScene::Change change = scene.update(tubes);
    EXPECT_THAT(change.tubes, ElementsAre(3, 9));
    EXPECT_TRUE(change.onlySelected && change.selection);
    EXPECT_TRUE(scene.isSelected(9));

    tubes.setSelected(3, false);
    EXPECT_FALSE(scene.update(tubes).onlySelected);

    tubes.setMark(4, markOf(u'X', 0x123456));
    tubes.setMark(9, markOf(u'X', 0x123456));
    change = scene.update(tubes);
    EXPECT_THAT(change.tubes, ElementsAre(4, 9));
    EXPECT_FALSE(change.onlySelected || change.selection);
    EXPECT_EQ(scene.mark(9), markOf(u'X', 0x123456));
    EXPECT_EQ(scene.look(9), scene.look(4) | 1);

    tubes.setMark(4, markOf(u'X', 0x654321));
    EXPECT_THAT(scene.update(tubes).tubes, ElementsAre(4));
    tubes.clearMarks();
    EXPECT_THAT(scene.update(tubes).tubes, ElementsAre(4, 9));
    EXPECT_TRUE(scene.mark(4).isOpen());
    EXPECT_TRUE(scene.isSelected(9));
}

TEST(MapSceneTest, ManyColoursOneAfterTheOtherStayBounded)
{
    ellery::SteamGen steamGen = sample::block(2, 2);
    ellery::TubeStates tubes(steamGen.numTube());
    MapScene scene(steamGen, tubes);
    tubes.setSelected(1, true);
    for (quint32 colour = 0; colour < 30000; ++colour) {
        tubes.setMark(0, markOf(u'A', colour));
        scene.update(tubes);
    }
    EXPECT_LT(scene.numLooks(), 20000u);
    EXPECT_EQ(scene.mark(0).colour, tarnwick::ColourRef(29999));
    EXPECT_TRUE(scene.isSelected(1));
}

TEST(MapSceneTest, TicksNameRowsAndColumnsByTheirLabels)
{
    ellery::SteamGen steamGen = sample::uBend(46, 94, true);
    const MapScene scene(steamGen);
    EXPECT_NEAR(scene.pitch(), 1.281, 1e-3);
    EXPECT_TRUE(scene.rows().straight && scene.rows().vertical);
    EXPECT_TRUE(scene.cols().straight && !scene.cols().vertical);
    EXPECT_EQ(scene.rows().ticks.size(), 46u);
    EXPECT_EQ(scene.cols().ticks.back().label, u"94"_s);

    ellery::SteamGen turned = sample::block(4, 6);
    QList<ellery::Tube> tubes = turned.tubes();
    for (ellery::Tube &tube : tubes)
        std::swap(tube.x, tube.y);
    turned.setTubes(tubes);
    turned.labels[int(ellery::Axis::Row)] = QStringList{u"A"_s, u"B"_s, QString(), u"D"_s};
    const MapScene side(turned);
    EXPECT_FALSE(side.rows().vertical);
    ASSERT_EQ(side.rows().ticks.size(), 3u); // row 2 does not exist for the plant
    EXPECT_EQ(side.rows().ticks[2].label, u"D"_s);
}

TEST(TubesheetOutlineTest, HoldsEveryTubeAtADistance)
{
    const ellery::SteamGen steamGen = sample::uBend();
    std::vector<QPointF> points;
    for (const ellery::Tube &tube : steamGen.tubes())
        points.emplace_back(tube.x, tube.y);
    const QPolygonF outline = tubesheetOutline(points, 1.6);
    double closest = 1e9;
    for (const QPointF &point : points) {
        ASSERT_TRUE(outline.containsPoint(point, Qt::WindingFill));
        for (const QPointF &edge : outline)
            closest = std::min(closest, std::hypot(edge.x() - point.x(), edge.y() - point.y()));
    }
    EXPECT_GT(closest, 1.6 * 0.74);
    EXPECT_TRUE(tubesheetOutline({}, 1).isEmpty());
    EXPECT_NEAR(tubesheetOutline({{3, 4}}, 2).boundingRect().width(), 4, 0.01);
    EXPECT_NEAR(tubesheetOutline({{0, 0}, {5, 0}, {9, 0}}, 1).boundingRect().width(), 11, 0.01);
}

} // namespace

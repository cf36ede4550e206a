#include <brannock/paint/MapCache.h>
#include <brannock/paint/MapPainter.h>
#include <cmath>
#include <gmock/gmock.h>
#include <QMarginsF>
#include <support/Marks.h>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;

namespace {

using namespace brannock;
using testing::ElementsAre;

const QColor kBackground(10, 20, 30);

MapView viewOf(const MapScene &scene, const QSize &size)
{
    MapView view;
    view.size = size;
    view.fit(scene.bounds(), {4, 4, 4, 4});
    return view;
}

QImage paint(const MapScene &scene, const MapView &view)
{
    QImage image(view.size.toSize(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    MapPainter().paint(image, scene, view, image.rect(), kBackground);
    return image;
}

/// The pixel that holds the point.
QPoint pixelOf(const QPointF &point)
{
    return QPoint(int(std::floor(point.x())), int(std::floor(point.y())));
}

/// The worst difference of a colour channel between two pictures, and how many pixels differ at all.
struct Difference
{
    int worst = 0;
    qsizetype pixels = 0;
};

Difference compare(const QImage &a, const QImage &b)
{
    Difference difference;
    for (int y = 0; y < std::min(a.height(), b.height()); ++y) {
        for (int x = 0; x < std::min(a.width(), b.width()); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int worst =
                std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
            difference.worst = std::max(difference.worst, worst);
            difference.pixels += worst > 0;
        }
    }
    return difference;
}

/// On the disc beside the symbol's ink: below the middle by two thirds of the radius.
QColor discColour(const QImage &image, const MapScene &scene, const MapView &view, int tube)
{
    const double aside = scene.radius() * view.scale * 0.72;
    return image.pixelColor(pixelOf(MapPainter::pixelPosition(scene, view, tube) + QPointF(0, aside)));
}

/// In the gap between the tube and its right neighbour.
QColor rimColour(const QImage &image, const MapScene &scene, const MapView &view, int tube)
{
    const double aside = scene.pitch() * view.scale * 0.5;
    return image.pixelColor(pixelOf(MapPainter::pixelPosition(scene, view, tube) + QPointF(aside, 0)));
}

TEST(MapPainterTest, DiscsHaveTheirColoursWhereverTheyStand)
{
    ellery::SteamGen steamGen = sample::block(8, 10);
    ellery::TubeStates tubes(steamGen.numTube());
    const int marked = steamGen.findTube({0, 2, 3});
    const int dark = steamGen.findTube({0, 7, 9});
    tubes.setMark(marked, markOf(u'A', 0x3C78F0));
    tubes.setMark(dark, markOf(u'\u25CF', 0x800000));
    tubes.setSelected(steamGen.findTube({0, 4, 4}), true);
    const MapScene scene(steamGen, tubes);
    for (const int x : {1, -1}) {
        for (const int y : {1, -1}) {
            MapView view = viewOf(scene, QSize(420, 360));
            view.xOrientation = x;
            view.yOrientation = y;
            const QImage image = paint(scene, view);
            EXPECT_EQ(discColour(image, scene, view, marked), QColor(0xF0, 0x78, 0x3C));
            EXPECT_EQ(discColour(image, scene, view, dark), QColor(0, 0, 0x80));
            EXPECT_EQ(image.pixelColor(pixelOf(MapPainter::pixelPosition(scene, view, dark))), QColor(Qt::white));
            // An open tube is light, the sheet between has the map's colour, the corner the surroundings'.
            EXPECT_GT(discColour(image, scene, view, steamGen.findTube({0, 0, 0})).lightness(), 230);
            EXPECT_EQ(rimColour(image, scene, view, marked), QColor(0xFD, 0xFF, 0xD0));
            EXPECT_EQ(rimColour(image, scene, view, steamGen.findTube({0, 4, 4})), QColor(0, 255, 0));
            EXPECT_EQ(image.pixelColor(1, 1), kBackground);
        }
    }
}

TEST(MapPainterTest, EverySizeFromDotsToBigDiscsIsPainted)
{
    ellery::SteamGen steamGen = sample::block(6, 6);
    ellery::TubeStates tubes(steamGen.numTube());
    const int tube = steamGen.findTube({0, 3, 3});
    tubes.setMark(tube, markOf(u'(', 0x2040C0));
    const MapScene scene(steamGen, tubes);
    for (const double pitch : {1.5, 2.0, 3.3, 4.7, 6.0, 9.1, 24.0, 90.0, 300.0}) {
        MapView view = viewOf(scene, QSize(400, 400));
        view.scale = pitch / scene.pitch();
        view.centre = scene.position(tube);
        const QImage image = paint(scene, view);
        const QPoint middle = pixelOf(MapPainter::pixelPosition(scene, view, tube));
        QColor found;
        // Beside the bracket's ink; the nearest pixel of a dot.
        for (int aside = 0; aside <= int(pitch / 3) && found != QColor(0xC0, 0x40, 0x20); ++aside)
            found = image.pixelColor(middle - QPoint(aside, 0));
        EXPECT_EQ(found, QColor(0xC0, 0x40, 0x20)) << pitch;
    }
}

TEST(MapPainterTest, TellsWhatItPaints)
{
    ellery::SteamGen steamGen = sample::block(2, 3);
    ellery::TubeStates tubes(steamGen.numTube());
    steamGen.stayRods.append({2, 1, 0});
    tubes.setMark(1, markOf(u'Q', 0x0000FF));
    tubes.setSelected(1, true);
    MapScene scene(steamGen, tubes);
    scene.watermark = u"DRAFT"_s;
    MapView view;
    view.size = QSizeF(200, 100);
    view.centre = QPointF(1, 0.5);
    view.scale = 40;
    EXPECT_THAT(MapPainter::describe(scene, view, QRectF(0, 0, 101, 100), true),
                ElementsAre(u"sheet"_s, u"watermark \"DRAFT\""_s, u"tube 60.0,70.0 open"_s,
                            u"tube 100.0,70.0 'Q' #ff0000 selected"_s, u"tube 60.0,30.0 open"_s,
                            u"tube 100.0,30.0 open"_s));
    view.scale = 5;
    EXPECT_THAT(MapPainter::describe(scene, view, QRectF(QPointF(0, 0), view.size), false),
                testing::Contains(u"tube 100.0,53.0 #ff0000 selected"_s)); // too small for symbols
}

TEST(MapPainterTest, LeavesEverythingOutsideTheExposedRectangleAlone)
{
    const ellery::SteamGen steamGen = sample::uBend();
    const MapScene scene(steamGen, sample::markLikeAPlan(steamGen));
    for (const double zoom : {1.0, 4.0, 20.0}) {
        MapView view = viewOf(scene, QSize(700, 400));
        view.zoomAt({300, 200}, zoom);
        const QImage whole = paint(scene, view);
        QImage part(whole.size(), QImage::Format_RGB32);
        part.fill(Qt::magenta);
        const QRect exposed(211, 133, 57, 91);
        MapPainter().paint(part, scene, view, exposed, kBackground);
        EXPECT_EQ(part.copy(exposed), whole.copy(exposed)) << zoom;
        QImage outside = part;
        QPainter(&outside).fillRect(exposed, Qt::magenta);
        QImage untouched(whole.size(), QImage::Format_RGB32);
        untouched.fill(Qt::magenta);
        EXPECT_EQ(outside, untouched) << zoom;
    }
}

TEST(MapPainterTest, TubesOnThePlainSheetLookLikeThoseThatAreBlended)
{
    ellery::SteamGen plain = sample::block(40, 60);
    ellery::TubeStates tubes(plain.numTube());
    for (int i = 0; i < plain.numTube(); i += 3)
        tubes.setMark(i, markOf(char16_t(u'A' + i % 5), 0x2040C0U * unsigned(1 + i % 7) & 0xFFFFFF));
    ellery::SteamGen crowded = plain;
    crowded.stayRods = {{0, 0, 0}}; // on top of the first tube
    const MapScene freely(plain, tubes);
    const MapScene blended(crowded, tubes);
    ASSERT_TRUE(freely.rodsKeepClear());
    ASSERT_FALSE(blended.rodsKeepClear());
    for (const double zoom : {1.0, 1.7, 3.1, 6.0}) {
        MapView view = viewOf(freely, QSize(640, 440));
        view.zoomAt({320, 220}, zoom);
        const QRect awayFromTheRod(80, 0, 560, 300);
        EXPECT_EQ(paint(freely, view).copy(awayFromTheRod), paint(blended, view).copy(awayFromTheRod)) << zoom;
    }
}

class MapCacheTest : public testing::Test
{
protected:
    MapCacheTest()
        : steamGen(sample::uBend(30, 60, true))
        , tubes(sample::markLikeAPlan(steamGen))
    {
        scene = MapScene(steamGen, tubes);
        view = viewOf(scene, QSize(640, 400));
        view.zoomAt({320, 200}, 2);
        cache.update(scene, view, kBackground);
    }

    void expectAsPaintedAnew(const char *what)
    {
        cache.update(scene, view, kBackground);
        EXPECT_EQ(cache.image().copy(), paint(scene, view)) << what;
    }

    ellery::SteamGen steamGen;
    ellery::TubeStates tubes;
    MapScene scene;
    MapView view;
    MapCache cache;
};

TEST_F(MapCacheTest, PannedPictureEqualsAFreshOne)
{
    int shifted = 0;
    for (int step = 0; step < 60; ++step) {
        view.panBy(step % 3 ? QPointF(-17, 5) : QPointF(9, -31));
        const MapCache::Work work = cache.update(scene, view, kBackground);
        EXPECT_NE(work, MapCache::Work::None);
        shifted += work == MapCache::Work::Shifted;
        const Difference difference = compare(cache.image(), paint(scene, view));
        // Only the smoothed edge of the sheet may be rounded otherwise.
        ASSERT_LE(difference.worst, 4) << step;
        ASSERT_LE(difference.pixels, 100) << step;
    }
    EXPECT_GT(shifted, 50);
    view.panBy({3000, 0});
    expectAsPaintedAnew("far away");
    view.panBy({-3000.4, 0.25});
    expectAsPaintedAnew("parts of pixels");
}

TEST_F(MapCacheTest, PatchesEqualAFreshPicture)
{
    const auto patched = [&] {
        const MapScene::Change change = scene.update(tubes);
        const QRegion region = cache.patch(scene, change);
        EXPECT_FALSE(region.isEmpty());
        EXPECT_EQ(cache.update(scene, view, kBackground), MapCache::Work::None);
        const Difference difference = compare(cache.image(), paint(scene, view));
        // Painted in another order, halos may differ by a pixel where they meet a neighbour.
        EXPECT_LE(difference.pixels, 12);
        EXPECT_LE(difference.worst, 40);
        return region;
    };
    const int middle = scene.grid().nearest(view.centre.x(), view.centre.y(), 10);
    tubes.setMark(middle, markOf(u'\u25B2', 0x112233));
    EXPECT_LT(patched().boundingRect().width(), 60);
    tubes.setSelected(middle, !tubes.isSelected(middle));
    patched();
    for (const qint32 tube : scene.grid().within(view.centre.x(), view.centre.y(), 8 * scene.pitch()))
        tubes.setMark(tube, {});
    patched();
}

TEST_F(MapCacheTest, LargeChangesWaitForTheNextPainting)
{
    tubes.clearMarks();
    EXPECT_EQ(cache.patch(scene, scene.update(tubes)).boundingRect(), QRect(0, 0, 640, 400));
    expectAsPaintedAnew("all symbols gone");
    scene = MapScene();
    cache.invalidate();
    expectAsPaintedAnew("no tubes at all");
}

} // namespace

#include <brannock/paint/MapRulers.h>
#include <cmath>
#include <gmock/gmock.h>
#include <QGuiApplication>
#include <QMarginsF>
#include <support/SampleSteamGen.h>

using namespace Qt::StringLiterals;

namespace {

using namespace brannock;

QStringList texts(const MapRulers::Layout &layout, ellery::Axis axis)
{
    QStringList list;
    for (const MapRulers::Label &label : layout.labels) {
        if (label.axis == axis)
            list << label.text;
    }
    return list;
}

void expectNoOverlap(const MapRulers::Layout &layout, const MapView &view)
{
    const QRectF viewport(QPointF(0, 0), view.size);
    for (size_t i = 0; i < layout.labels.size(); ++i) {
        ASSERT_TRUE(viewport.adjusted(-0.5, -0.5, 0.5, 0.5).contains(layout.labels[i].rect)) << i;
        for (size_t k = 0; k < i; ++k)
            ASSERT_FALSE(layout.labels[i].rect.intersects(layout.labels[k].rect))
                << qPrintable(layout.labels[i].text) << " on " << qPrintable(layout.labels[k].text);
    }
}

MapView fitted(const MapScene &scene, const MapRulers &rulers, const QSizeF &size)
{
    MapView view;
    view.size = size;
    view.fit(scene.bounds(), rulers.margins());
    return view;
}

TEST(MapRulersTest, LabelsThinOutAndNeverOverlap)
{
    const MapScene scene(sample::uBend());
    const MapRulers rulers(scene, QGuiApplication::font());
    for (const QSizeF size : {QSizeF(1500, 900), QSizeF(500, 400), QSizeF(200, 150), QSizeF(60, 50)}) {
        for (const double zoom : {1.0, 1.9, 7.0}) {
            MapView view = fitted(scene, rulers, size);
            view.zoomAt({size.width() / 3, size.height() / 3}, zoom);
            view.xOrientation = zoom > 1.5 ? -1 : 1;
            expectNoOverlap(rulers.layout(scene, view), view);
        }
    }
    const MapView wide = fitted(scene, rulers, QSizeF(4000, 2500));
    EXPECT_EQ(texts(rulers.layout(scene, wide), ellery::Axis::Row).size(), 46);
    const MapView small = fitted(scene, rulers, QSizeF(500, 400));
    const QStringList few = texts(rulers.layout(scene, small), ellery::Axis::Col);
    EXPECT_THAT(few, testing::Contains(u"10"_s));
    EXPECT_THAT(few, testing::Not(testing::Contains(u"11"_s)));
}

TEST(MapRulersTest, StayAtTheEdgeWhenTheSheetReachesBeyondIt)
{
    const MapScene scene(sample::uBend());
    const MapRulers rulers(scene, QGuiApplication::font());
    MapView view = fitted(scene, rulers, QSizeF(800, 500));
    const MapRulers::Layout fit = rulers.layout(scene, view);
    EXPECT_FALSE(fit.uprightPinned || fit.levelPinned);
    view.zoomAt({400, 100}, 6);
    const MapRulers::Layout zoomed = rulers.layout(scene, view);
    EXPECT_TRUE(zoomed.uprightPinned && zoomed.levelPinned);
    EXPECT_EQ(zoomed.upright.left(), 0);
    EXPECT_NEAR(zoomed.level.bottom(), 500, 1e-6);
    // A label stands beside its row.
    const int tube = scene.grid().nearest(view.centre.x(), view.centre.y(), 5);
    const MapRulers::Label label = rulers.labelOf(scene, view, zoomed, ellery::Axis::Row, tube);
    EXPECT_EQ(label.text, QString::number(scene.tube(tube).address.row));
    EXPECT_NEAR(label.rect.center().y(), view.toView(scene.position(tube)).y(), 0.5);
}

TEST(MapRulersTest, AskewNumberingIsNamedAtTheLines)
{
    // Columns that lean: each row is shifted by half a dozen pitches against the one below.
    ellery::SteamGen steamGen = sample::block(12, 12);
    QList<ellery::Tube> tubes = steamGen.tubes();
    for (ellery::Tube &tube : tubes)
        tube.x += 1.5f * float(tube.address.row);
    steamGen.setTubes(tubes);
    const MapScene scene(steamGen);
    EXPECT_TRUE(scene.rows().straight);
    EXPECT_FALSE(scene.cols().straight);
    const MapRulers rulers(scene, QGuiApplication::font());
    const MapView view = fitted(scene, rulers, QSizeF(900, 600));
    const MapRulers::Layout layout = rulers.layout(scene, view);
    expectNoOverlap(layout, view);
    EXPECT_GE(texts(layout, ellery::Axis::Col).size(), 6);
    // Their labels lie on the sheet or on its edge, and can be read there under a dark theme, too.
    for (const MapRulers::Label &label : layout.labels) {
        const bool isInside = layout.sheet.containsPoint(label.rect.center(), Qt::WindingFill);
        EXPECT_TRUE(label.ground != MapRulers::Ground::Beside || !isInside) << qPrintable(label.text);
    }
    const MapRulers::Colours colours = MapRulers::Colours::of(scene.options, QColor(40, 40, 44));
    EXPECT_GE(contrast(colours.tick, colours.strip), 4.5);
    EXPECT_GE(contrast(colours.onSheet, fromColourRef(scene.options.mapColour)), 4.5);
}

TEST(ThinnedLabelsTest, KeepEndsAndRoundNumbers)
{
    std::vector<Tick> ticks;
    std::vector<double> places;
    for (int number = 1; number <= 94; ++number) {
        ticks.push_back({number, QString::number(number), double(number), {}, {}});
        places.push_back(number * 5.0);
    }
    const auto chosen = [&](double room) {
        QList<int> numbers;
        const std::vector<bool> labelled = thinnedLabels(ticks, places, room);
        for (size_t i = 0; i < ticks.size(); ++i) {
            if (labelled[i])
                numbers.append(ticks[i].number);
        }
        return numbers;
    };
    EXPECT_EQ(chosen(4).size(), 94);
    EXPECT_THAT(chosen(18).mid(0, 4), testing::ElementsAre(1, 5, 10, 15));
    EXPECT_EQ(chosen(18).last(), 94);
    EXPECT_THAT(chosen(240), testing::ElementsAre(1, 50));
    EXPECT_THAT(chosen(1e6).size(), 1);
    EXPECT_TRUE(thinnedLabels({}, {}, 5).empty());
}

} // namespace

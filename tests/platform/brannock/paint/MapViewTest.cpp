#include <brannock/paint/MapView.h>
#include <gtest/gtest.h>
#include <QMarginsF>

namespace {

using namespace brannock;

MapView view(int xOrientation, int yOrientation)
{
    MapView view;
    view.size = QSizeF(400, 300);
    view.centre = QPointF(7, -3);
    view.scale = 12.5;
    view.xOrientation = xOrientation;
    view.yOrientation = yOrientation;
    return view;
}

bool close(const QPointF &a, const QPointF &b)
{
    return (a - b).manhattanLength() < 1e-9;
}

TEST(MapViewTest, LeadsThereAndBackInEveryOrientation)
{
    for (const int x : {1, -1}) {
        for (const int y : {1, -1}) {
            MapView v = view(x, y);
            EXPECT_TRUE(close(v.toMap(v.toView(2.5, 9)), {2.5, 9}));
            EXPECT_GT(x * (v.toView(8, 0).x() - v.toView(7, 0).x()), 0);
            EXPECT_LT(y * (v.toView(0, 1).y() - v.toView(0, 0).y()), 0); // map upwards, screen downwards

            const QPointF fixed = v.toMap(QPointF(33, 44));
            v.zoomAt({33, 44}, 3.7);
            EXPECT_TRUE(close(v.toView(fixed), {33, 44}));
            v.panBy({10, -20});
            EXPECT_TRUE(close(v.toView(fixed), {43, 24}));
        }
    }
}

TEST(MapViewTest, FitsWithinTheMargins)
{
    const QRectF map(-5, 10, 30, 8);
    const QMarginsF margins(40, 5, 10, 25);
    for (const int orientation : {1, -1}) {
        MapView v = view(orientation, orientation);
        v.fit(map, margins);
        const QRectF shown = v.toView(map);
        const QRectF room = QRectF(0, 0, 400, 300).marginsRemoved(margins);
        EXPECT_TRUE(room.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(shown));
        EXPECT_NEAR(shown.width(), room.width(), 1e-6);
        EXPECT_TRUE(close(shown.center(), room.center()));
    }
    MapView v = view(1, 1);
    v.fit(QRectF(1, 2, 0, 0), margins);
    EXPECT_DOUBLE_EQ(v.scale, 12.5); // a single point says nothing about the scale
}

} // namespace

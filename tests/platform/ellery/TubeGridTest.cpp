#include <cmath>
#include <ellery/TubeGrid.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using ellery::Tube;
using ellery::TubeGrid;

QList<Tube> scattered(std::mt19937 &random, int count, double width, double height)
{
    std::uniform_real_distribution<double> x(-width, width);
    std::uniform_real_distribution<double> y(-height, height);
    QList<Tube> tubes;
    for (int i = 0; i < count; ++i)
        tubes.append({{0, 0, 0}, float(x(random)), float(y(random)), false});
    return tubes;
}

/// Triangular pitch of 1, where distances of whole and half pitches are exact or nearly so.
QList<Tube> lattice(int rows, int cols)
{
    QList<Tube> tubes;
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col)
            tubes.append({{0, qint16(row), qint16(col)}, col + (row % 2 ? 0.5f : 0), row * 0.8660254f, false});
    }
    return tubes;
}

double distance(const Tube &tube, double x, double y)
{
    const double dx = double(tube.x) - x;
    const double dy = double(tube.y) - y;
    return std::sqrt(dx * dx + dy * dy);
}

template <typename Condition>
QList<qint32> naive(const QList<Tube> &tubes, Condition &&condition)
{
    QList<qint32> found;
    for (int i = 0; i < tubes.size(); ++i) {
        if (condition(tubes[i]))
            found.append(i);
    }
    return found;
}

int naiveNearest(const QList<Tube> &tubes, double x, double y, double limit)
{
    int best = -1;
    for (int i = 0; i < tubes.size(); ++i) {
        const double d = distance(tubes[i], x, y);
        if (d <= limit && (best < 0 || d < distance(tubes[best], x, y)))
            best = i;
    }
    return best;
}

/// Another way to the winding rule than crossings: the sum of the angles under which the edges are seen.
bool isInside(const QList<QPointF> &polygon, double x, double y)
{
    double sum = 0;
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF a = polygon[i] - QPointF(x, y);
        const QPointF b = polygon[(i + 1) % polygon.size()] - QPointF(x, y);
        sum += std::atan2(a.x() * b.y() - a.y() * b.x(), a.x() * b.x() + a.y() * b.y());
    }
    return std::abs(sum) > 1;
}

void compareWithNaive(const QList<Tube> &tubes, std::mt19937 &random, double reach)
{
    const TubeGrid grid(tubes);
    std::uniform_real_distribution<double> place(-reach * 1.2, reach * 1.2);
    for (int round = 0; round < 40; ++round) {
        const double x1 = place(random), y1 = place(random), x2 = place(random), y2 = place(random);
        const double radius = std::abs(place(random)) / 3;
        EXPECT_EQ(grid.within(x1, y1, radius),
                  naive(tubes, [&](auto &tube) { return distance(tube, x1, y1) <= radius; }));
        EXPECT_EQ(grid.inRect(x1, y1, x2, y2), naive(tubes, [&](auto &tube) {
                      return tube.x >= std::min(x1, x2) && tube.x <= std::max(x1, x2) && tube.y >= std::min(y1, y2) &&
                             tube.y <= std::max(y1, y2);
                  }));
        EXPECT_EQ(grid.nearest(x1, y1, radius), naiveNearest(tubes, x1, y1, radius));
        const QList<QPointF> lasso = {{x1, y1}, {x2, y2}, {x1, y2}, {place(random), y1}, {x2, place(random)}};
        EXPECT_EQ(grid.inPolygon(lasso), naive(tubes, [&](auto &tube) { return isInside(lasso, tube.x, tube.y); }));
    }
}

TEST(TubeGridTest, FindsWhatALoopOverAllTubesFinds)
{
    std::mt19937 random(20);
    compareWithNaive(scattered(random, 1, 10, 10), random, 10);
    compareWithNaive(scattered(random, 700, 10, 10), random, 10);
    compareWithNaive(scattered(random, 500, 100, 0), random, 100); // all on one line
    QList<Tube> outlier = scattered(random, 300, 1, 1);
    outlier.append({{0, 0, 0}, 5000, -3000, false});
    compareWithNaive(outlier, random, 1.5);
}

TEST(TubeGridTest, RadiusOfWholePitchesTakesTheTubesOnItsEdge)
{
    const QList<Tube> tubes = lattice(40, 40);
    const TubeGrid grid(tubes);
    EXPECT_NEAR(grid.spacing(), 1, 1e-6);
    for (const double radius : {1.0, 1.5, 3.0, 7.0}) {
        for (int i = 0; i < tubes.size(); i += 17) {
            const double x = tubes[i].x, y = tubes[i].y;
            ASSERT_EQ(grid.within(x, y, radius),
                      naive(tubes, [&](auto &tube) { return distance(tube, x, y) <= radius; }));
        }
    }
}

TEST(TubeGridTest, EquallyNearTubesGiveTheFirst)
{
    const QList<Tube> tubes = {{{0, 0, 0}, 2, 0, false}, {{0, 0, 1}, 0, 0, false}, {{1, 0, 0}, 0, 0, false}};
    const TubeGrid grid(tubes);
    EXPECT_EQ(grid.nearest(1, 0, 5), 0);
    EXPECT_EQ(grid.nearest(0, 0, 5), 1);
    EXPECT_EQ(grid.nearest(3.01, 0, 1), -1);
    EXPECT_DOUBLE_EQ(grid.spacing(), 2); // tubes in one place say nothing about the pitch
}

TEST(TubeGridTest, BadPlacesAndEmptyListsFindNothing)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    const TubeGrid grid({{{0, 0, 0}, nan, 0, false}, {{0, 0, 1}, infinite, 1, false}, {{0, 0, 2}, 1, 1, false}});
    EXPECT_EQ(grid.count(), 1);
    EXPECT_EQ(grid.inRect(-1e9, -1e9, 1e9, 1e9), QList<qint32>{2});
    EXPECT_TRUE(grid.within(double(nan), 0, 10).isEmpty());
    EXPECT_EQ(grid.spacing(), 0);

    const TubeGrid empty{QList<Tube>()};
    EXPECT_EQ(empty.nearest(0, 0, 1e9), -1);
    EXPECT_TRUE(empty.inPolygon({{0, 0}, {1, 0}, {0, 1}}).isEmpty());
}

} // namespace

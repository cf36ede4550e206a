#include "TubeGrid.h"

#include <algorithm>
#include <cmath>

namespace ellery {

static constexpr double kTubesPerCell = 2;

static double distance(double x, double y, const TubeGrid::Entry &entry)
{
    const double dx = double(entry.x) - x;
    const double dy = double(entry.y) - y;
    return std::sqrt(dx * dx + dy * dy);
}

static bool isPlaced(const Tube &tube)
{
    return std::isfinite(tube.x) && std::isfinite(tube.y);
}

TubeGrid::TubeGrid(const QList<Tube> &tubes)
{
    measure(tubes);
    if (m_numCol == 0)
        return;
    // Counting sort: count the tubes of each cell, convert the counts to start indices, then place each tube.
    std::vector<qint32> fill(size_t(m_numCol) * size_t(m_numRow) + 1, 0);
    for (const Tube &tube : tubes) {
        if (isPlaced(tube))
            ++fill[size_t(rowAt(tube.y)) * size_t(m_numCol) + size_t(colAt(tube.x)) + 1];
    }
    for (size_t i = 1; i < fill.size(); ++i)
        fill[i] += fill[i - 1];
    m_starts = fill;
    m_entries.resize(size_t(m_starts.back()));
    for (qsizetype i = 0; i < tubes.size(); ++i) {
        const Tube &tube = tubes[i];
        if (!isPlaced(tube))
            continue;
        const size_t cell = size_t(rowAt(tube.y)) * size_t(m_numCol) + size_t(colAt(tube.x));
        m_entries[size_t(fill[cell]++)] = {tube.x, tube.y, qint32(i)};
    }
}

void TubeGrid::measure(const QList<Tube> &tubes)
{
    qint64 placed = 0;
    for (const Tube &tube : tubes) {
        if (!isPlaced(tube))
            continue;
        if (placed++ == 0)
            m_bounds = {tube.x, tube.y, tube.x, tube.y};
        m_bounds.left = std::min(m_bounds.left, double(tube.x));
        m_bounds.right = std::max(m_bounds.right, double(tube.x));
        m_bounds.bottom = std::min(m_bounds.bottom, double(tube.y));
        m_bounds.top = std::max(m_bounds.top, double(tube.y));
    }
    if (placed == 0)
        return;
    const double width = m_bounds.right - m_bounds.left;
    const double height = m_bounds.top - m_bounds.bottom;
    const double share = kTubesPerCell / double(placed);
    // The second bound keeps the number of cells below the number of tubes if all tubes are in one line.
    m_cell = std::max(std::sqrt(width) * std::sqrt(height) * std::sqrt(share), std::max(width, height) * share);
    if (!(m_cell > 0) || !std::isfinite(m_cell))
        m_cell = 1;
    m_numCol = int(width / m_cell) + 1;
    m_numRow = int(height / m_cell) + 1;
}

double TubeGrid::nearestNeighbour(const Entry &entry) const
{
    const double reach = std::max(m_bounds.right - m_bounds.left, m_bounds.top - m_bounds.bottom);
    for (double radius = m_cell;; radius *= 2) {
        double best = 0;
        visit(entry.x - radius, entry.y - radius, entry.x + radius, entry.y + radius, [&](const Entry &other) {
            const double d = distance(entry.x, entry.y, other);
            if (d > 0 && d <= radius && (best == 0 || d < best))
                best = d;
        });
        if (best > 0 || radius > 2 * reach)
            return best;
    }
}

double TubeGrid::spacing() const
{
    static constexpr size_t kSample = 256;
    std::vector<double> distances;
    const size_t step = std::max<size_t>(1, m_entries.size() / kSample);
    for (size_t i = 0; i < m_entries.size(); i += step) {
        if (const double d = nearestNeighbour(m_entries[i]); d > 0)
            distances.push_back(d);
    }
    if (distances.empty())
        return 0;
    const auto middle = distances.begin() + qsizetype(distances.size() / 2);
    std::nth_element(distances.begin(), middle, distances.end());
    return *middle;
}

int TubeGrid::nearest(double x, double y, double maxDistance) const
{
    int best = -1;
    double bestDistance = maxDistance;
    visit(x - maxDistance, y - maxDistance, x + maxDistance, y + maxDistance, [&](const Entry &entry) {
        const double d = distance(x, y, entry);
        if (d < bestDistance || (d == bestDistance && (best < 0 || entry.tube < best))) {
            best = entry.tube;
            bestDistance = d;
        }
    });
    return best;
}

QList<qint32> TubeGrid::within(double x, double y, double radius) const
{
    QList<qint32> found;
    // The rectangle is slightly larger, so that rounding of its edge excludes no tube at exactly the radius.
    const double reach = radius + (std::abs(radius) + std::abs(x) + std::abs(y)) * 1e-12;
    visit(x - reach, y - reach, x + reach, y + reach, [&](const Entry &entry) {
        if (distance(x, y, entry) <= radius)
            found.append(entry.tube);
    });
    std::sort(found.begin(), found.end());
    return found;
}

QList<qint32> TubeGrid::inRect(double x1, double y1, double x2, double y2) const
{
    QList<qint32> found;
    visit(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2),
          [&](const Entry &entry) { found.append(entry.tube); });
    std::sort(found.begin(), found.end());
    return found;
}

/// Winding number of the closed line around the point: counts the edges that cross the ray to the right.
static int windings(const QList<QPointF> &points, double x, double y)
{
    int count = 0;
    QPointF from = points.last();
    for (const QPointF &to : points) {
        const bool upwards = from.y() <= y && to.y() > y;
        const bool downwards = from.y() > y && to.y() <= y;
        if (upwards || downwards) {
            const double crossing = from.x() + (y - from.y()) / (to.y() - from.y()) * (to.x() - from.x());
            if (crossing > x)
                count += upwards ? 1 : -1;
        }
        from = to;
    }
    return count;
}

QList<qint32> TubeGrid::inPolygon(const QList<QPointF> &points) const
{
    QList<qint32> found;
    if (points.size() < 3)
        return found;
    const auto [left, right] =
        std::minmax_element(points.begin(), points.end(), [](auto &a, auto &b) { return a.x() < b.x(); });
    const auto [bottom, top] =
        std::minmax_element(points.begin(), points.end(), [](auto &a, auto &b) { return a.y() < b.y(); });
    visit(left->x(), bottom->y(), right->x(), top->y(), [&](const Entry &entry) {
        if (windings(points, entry.x, entry.y) != 0)
            found.append(entry.tube);
    });
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace ellery

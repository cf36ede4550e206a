#include "TubesheetOutline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brannock {

static double cross(const QPointF &origin, const QPointF &a, const QPointF &b)
{
    return (a.x() - origin.x()) * (b.y() - origin.y()) - (a.y() - origin.y()) * (b.x() - origin.x());
}

/// Andrew's monotone chain; counterclockwise, without points on the edges.
static std::vector<QPointF> convexHull(std::vector<QPointF> points)
{
    const auto before = [](const QPointF &a, const QPointF &b) {
        return a.x() < b.x() || (!(b.x() < a.x()) && a.y() < b.y());
    };
    const auto same = [](const QPointF &a, const QPointF &b) {
        return !(a.x() < b.x() || b.x() < a.x()) && !(a.y() < b.y() || b.y() < a.y());
    };
    std::sort(points.begin(), points.end(), before);
    points.erase(std::unique(points.begin(), points.end(), same), points.end());
    if (points.size() < 3)
        return points;
    std::vector<QPointF> hull;
    for (int pass = 0; pass < 2; ++pass) {
        const size_t base = hull.size();
        for (const QPointF &point : points) {
            while (hull.size() >= base + 2 && cross(hull[hull.size() - 2], hull.back(), point) <= 0)
                hull.pop_back();
            hull.push_back(point);
        }
        hull.pop_back();
        std::reverse(points.begin(), points.end());
    }
    return hull;
}

static void appendArc(QPolygonF &outline, const QPointF &centre, double radius, double from, double to)
{
    static constexpr double kStep = std::numbers::pi / 36;
    if (to < from)
        to += 2 * std::numbers::pi;
    const int steps = int(std::ceil((to - from) / kStep));
    for (int i = 0; i <= steps; ++i) {
        const double angle = from + (steps > 0 ? (to - from) * i / steps : 0);
        outline.append(centre + QPointF(std::cos(angle), std::sin(angle)) * radius);
    }
}

/// Rounds the corners, so that the stepped edge of a bundle resembles the circle that it follows. Each corner becomes a
/// curve that stays within the corner's depth: flat corners are rounded over half their edges, sharp ones only at the
/// tip.
static std::vector<QPointF> rounded(const std::vector<QPointF> &hull, double depth)
{
    static constexpr int kPieces = 6;
    if (hull.size() < 3)
        return hull;
    std::vector<QPointF> curve;
    for (size_t i = 0; i < hull.size(); ++i) {
        const QPointF &corner = hull[i];
        const QPointF back = hull[(i + hull.size() - 1) % hull.size()] - corner;
        const QPointF ahead = hull[(i + 1) % hull.size()] - corner;
        const double backLength = std::hypot(back.x(), back.y());
        const double aheadLength = std::hypot(ahead.x(), ahead.y());
        const QPointF middle = (back / backLength + ahead / aheadLength) / 2;
        const double bend = std::hypot(middle.x(), middle.y());
        // The middle of the curve is half as far from the corner as the line between its ends.
        const double reach = std::min({backLength / 2, aheadLength / 2, 2 * depth / std::max(bend, 1e-9)});
        const QPointF from = corner + back / backLength * reach;
        const QPointF to = corner + ahead / aheadLength * reach;
        for (int k = 0; k <= kPieces; ++k) {
            const double t = double(k) / kPieces;
            curve.push_back(from * ((1 - t) * (1 - t)) + corner * (2 * t * (1 - t)) + to * (t * t));
        }
    }
    return convexHull(std::move(curve));
}

QPolygonF tubesheetOutline(std::vector<QPointF> points, double margin)
{
    const std::vector<QPointF> hull = rounded(convexHull(std::move(points)), margin * 0.25);
    QPolygonF outline;
    if (hull.size() == 1)
        appendArc(outline, hull[0], margin, 0, 2 * std::numbers::pi);
    if (hull.size() < 2)
        return outline;
    const auto outwards = [&](size_t edge) {
        const QPointF along = hull[(edge + 1) % hull.size()] - hull[edge];
        return std::atan2(-along.x(), along.y());
    };
    for (size_t i = 0; i < hull.size(); ++i)
        appendArc(outline, hull[i], margin, outwards((i + hull.size() - 1) % hull.size()), outwards(i));
    return outline;
}

} // namespace brannock

#pragma once
#include <QPolygonF>
#include <vector>

namespace brannock {

/// The edge of the tubesheet, derived from the tubes: the convex hull of the points, expanded by the margin, with
/// rounded corners. Every point is at least three quarters of the margin from the edge. Empty if there are no points.
QPolygonF tubesheetOutline(std::vector<QPointF> points, double margin);

} // namespace brannock

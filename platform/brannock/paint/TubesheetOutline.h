#pragma once
#include <QPolygonF>
#include <vector>

namespace brannock {

/// The edge of the tubesheet as the tubes suggest it: the convex hull of the points, set off outwards by the margin,
/// with its corners rounded. Every point keeps at least three quarters of the margin from the edge. Empty without
/// points.
QPolygonF tubesheetOutline(std::vector<QPointF> points, double margin);

} // namespace brannock

#pragma once
#include <ellery/SteamGen.h>
#include <QPointF>
#include <QString>
#include <vector>

namespace brannock {

/// One line of tubes (a row or a column) and its name.
struct Tick
{
    int number = 0;
    QString label;
    double pos = 0;  ///< position on the ruler: x or y on the map
    QPointF at;      ///< the line's first tube
    QPointF outward; ///< unit vector pointing away from the line's other tubes
};

/// The rows or the columns of a tubesheet, sorted by position. If they are parallel to an axis of the map, they are
/// marked on a ruler beside it. If they are oblique (numbering along the sides of a hexagon), each is marked at its
/// first tube.
struct TickAxis
{
    bool straight = false;
    bool vertical = false; ///< true if the ruler is vertical, since the lines are above each other
    std::vector<Tick> ticks;
};

/// pitch: distance between neighbouring tubes on the map
TickAxis makeTickAxis(const ellery::SteamGen &steamGen, ellery::Axis axis, double pitch);

} // namespace brannock

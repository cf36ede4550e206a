#pragma once
#include <ellery/SteamGen.h>
#include <QPointF>
#include <QString>
#include <vector>

namespace brannock {

/// One line of tubes (a row or a column) and how it is called.
struct Tick
{
    int number = 0;
    QString label;
    double pos = 0;  ///< the line's place on the ruler: its x or y on the map
    QPointF at;      ///< the line's first tube
    QPointF outward; ///< unit vector away from the line's other tubes
};

/// The rows or the columns of a tubesheet, sorted by place. Where they run straight along an axis of the map they are
/// marked on a ruler beside it; where they run askew (numbering along the sides of a hexagon) each is marked at its
/// first tube.
struct TickAxis
{
    bool straight = false;
    bool vertical = false; ///< the lines lie above each other: their ruler is upright
    std::vector<Tick> ticks;
};

/// pitch: the distance of neighbouring tubes on the map
TickAxis makeTickAxis(const ellery::SteamGen &steamGen, ellery::Axis axis, double pitch);

} // namespace brannock

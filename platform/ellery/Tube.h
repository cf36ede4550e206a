#pragma once
#include <compare>
#include <QtGlobal>

namespace ellery {

/// The address of a tube on the tubesheet. Lists are sorted by sec, then row, then col.
struct TubeAddress
{
    qint16 sec = 0;
    qint16 row = 0;
    qint16 col = 0;
    auto operator<=>(const TubeAddress &) const = default;
};

/// One tube: its address and its position on the tubesheet map.
struct Tube
{
    TubeAddress address;
    float x = 0;            ///< map coordinates, in the component's length unit (usually inches)
    float y = 0;            ///< upwards
    bool periphery = false; ///< on the edge of the bundle
};

/// A location on the map without a tube: a stay rod, or the tube lane.
struct Mark
{
    float x = 0;
    float y = 0;
    int kind = 0; ///< 0 stay rod
};

} // namespace ellery

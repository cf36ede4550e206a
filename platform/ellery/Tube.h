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
    /// An address of no tube (all -1) if one of the numbers does not fit into 16 bits. Otherwise a number would be
    /// taken for its lower half.
    static TubeAddress of(int sec, int row, int col)
    {
        const TubeAddress address{qint16(sec), qint16(row), qint16(col)};
        const bool fits = address.sec == sec && address.row == row && address.col == col;
        return fits ? address : TubeAddress{-1, -1, -1};
    }
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

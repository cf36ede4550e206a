#pragma once
#include "MapLegend.h"

namespace plans {

/// What of the map is not legend or selection but can be undone all the same; the owner of the window keeps it.
struct MapExtras
{
    int xOrientation = 1; ///< -1: flipped
    int yOrientation = 1;
    QByteArray header; ///< the print header as its record in map files
    bool operator==(const MapExtras &) const = default;
};

/// The map at one moment. Copies are cheap, and moments share what did not change between them.
class MapState
{
public:
    MapState() = default;
    /// previous: the moment before, whose data is shared where it is still the same.
    static MapState capture(const MapLegend &legend, const MapExtras &extras, const MapState &previous);
    void restore(MapLegend &legend) const;

    const MapExtras &extras() const { return m_extras; }
    bool operator==(const MapState &other) const;
    /// Whether a map file would hold the same: selection and flips are not stored.
    bool isStoredLike(const MapState &other) const;

private:
    bool hasSameEntries(const MapState &other) const;

    std::vector<std::shared_ptr<const MapFill>> m_entries;
    QList<qint32> m_selection;
    MapExtras m_extras;
};

} // namespace plans

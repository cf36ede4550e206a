#pragma once
#include "MapState.h"

#include <QFlags>

namespace map {

/// One change of a map document, sent to its listeners when it is complete.
struct MapEvent
{
    enum What {
        EntryList = 0x1, ///< entries were added, removed, moved or got other parameters
        Shown = 0x2,     ///< entries are shown or hidden
        Marks = 0x4,     ///< symbols or colours of entries
        Labels = 0x8,
        Tubes = 0x10, ///< the tubes that entries mark
        Selection = 0x20,
        Orientation = 0x40,
        Header = 0x80,
        Description = 0x100,
        File = 0x200,      ///< the map's file or its state
        Undo = 0x400,      ///< the undo history, or whether the map is modified
        Component = 0x800, ///< another component or another version of it: everything else has changed, too
    };
    Q_DECLARE_FLAGS(Changes, What)

    Changes what;
    QList<int> entries; ///< places of the changed entries, after the change

    /// Any change of the legend.
    static constexpr Changes kLegend{EntryList | Shown | Marks | Labels | Tubes | Component};
    /// Any change of the appearance of tubes.
    static constexpr Changes kLook{EntryList | Shown | Marks | Tubes | Selection | Component};
    bool has(Changes changes) const { return (what & changes) != Changes(); }

    /// The differences between two states.
    static MapEvent between(const MapState &before, const MapState &after);
};

} // namespace map

Q_DECLARE_OPERATORS_FOR_FLAGS(map::MapEvent::Changes)

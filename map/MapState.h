#pragma once
#include "MapHeader.h"

#include <memory>
#include <plans/MapFill.h>
#include <QList>
#include <vector>

namespace map {

/// A legend entry. Entries never change: an edit replaces them, so that states and previews can share them.
using Entry = std::shared_ptr<const plans::MapFill>;
/// In the order of the legend. If entries overlap, the later entry is visible.
using Entries = std::vector<Entry>;

/// The part of a map that undo restores. Copies are cheap because they share entries.
struct MapState
{
    Entries entries;
    QList<qint32> selection; ///< ascending indices of the selected tubes
    int xOrientation = 1;    ///< -1: flipped
    int yOrientation = 1;
    MapHeader header;
    QString description;

    bool operator==(const MapState &other) const;
    /// True if a map file would be the same: selection and flips are not stored.
    bool isStoredLike(const MapState &other) const;
};

/// True if both are equal for a user.
bool isSame(const Entry &a, const Entry &b);
/// True if the entries mark the same tubes in the same way; entries may differ in whether they are shown.
bool marksTheSame(const Entries &a, const Entries &b);

/// Paints the entries on states without marks, the last entry first. Returns for each entry the number of tubes that
/// show its mark.
QList<int> paintEntries(const Entries &entries, const ellery::SteamGen &component, ellery::TubeStates &tubes);

} // namespace map

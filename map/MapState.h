#pragma once
#include "MapHeader.h"

#include <memory>
#include <plans/MapFill.h>
#include <QList>
#include <vector>

namespace map {

/// A legend entry. Entries never change: an edit replaces them, so states and previews share them.
using Entry = std::shared_ptr<const plans::MapFill>;
/// In the order of the legend. Where entries overlap, the later one shows.
using Entries = std::vector<Entry>;

/// Everything of a map that undo brings back. Copies are cheap: they share their entries.
struct MapState
{
    Entries entries;
    QList<qint32> selection; ///< ascending indices of the selected tubes
    int xOrientation = 1;    ///< -1: flipped
    int yOrientation = 1;
    MapHeader header;
    QString description;

    bool operator==(const MapState &other) const;
    /// Whether a map file would hold the same: selection and flips are not stored.
    bool isStoredLike(const MapState &other) const;
};

/// Whether a user could not tell the two apart.
bool isSame(const Entry &a, const Entry &b);
/// Whether the entries mark the same tubes in the same way. Which of them are shown does not count.
bool marksTheSame(const Entries &a, const Entries &b);

/// Paints the entries on states without marks, the last entry first. Returns for each entry how many tubes show its
/// mark.
QList<int> paintEntries(const Entries &entries, const ellery::SteamGen &component, ellery::TubeStates &tubes);

} // namespace map

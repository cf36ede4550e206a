#pragma once
#include <QList>

#include <vector>

namespace tarnwick {

/// Moves entries so that they stand before the entry at another place, in their order. Returns the new place of the
/// first.
template <typename Entry>
int moveBefore(QList<Entry> &entries, const QList<int> &places, int before)
{
    std::vector<bool> isMoved(size_t(entries.size()));
    for (const int place : places)
        isMoved[size_t(place)] = true;
    QList<Entry> moved;
    QList<Entry> others;
    qsizetype target = -1;
    for (int place = 0; place < int(entries.size()); ++place) {
        if (place == before)
            target = others.size();
        (isMoved[size_t(place)] ? moved : others).append(entries[place]);
    }
    target = target < 0 ? others.size() : target;
    entries = others.first(target) + moved + others.sliced(target);
    return int(target);
}

} // namespace tarnwick

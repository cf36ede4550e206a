#include "MapState.h"

#include <algorithm>

namespace map {

namespace {

template <typename Same>
bool areAll(const Entries &a, const Entries &b, Same same)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

bool isSameButForShown(const Entry &a, const Entry &b)
{
    if (isSame(a, b))
        return true;
    if (a->typeKey != b->typeKey || a->shown == b->shown)
        return false;
    const auto copy = a->clone();
    copy->shown = b->shown;
    return copy->isSameAs(*b);
}

} // namespace

bool isSame(const Entry &a, const Entry &b)
{
    return a == b || (a->typeKey == b->typeKey && a->isSameAs(*b));
}

bool marksTheSame(const Entries &a, const Entries &b)
{
    return areAll(a, b, isSameButForShown);
}

bool MapState::operator==(const MapState &other) const
{
    return selection == other.selection && xOrientation == other.xOrientation && yOrientation == other.yOrientation &&
           isStoredLike(other);
}

bool MapState::isStoredLike(const MapState &other) const
{
    return header == other.header && description == other.description && areAll(entries, other.entries, isSame);
}

QList<int> paintEntries(const Entries &entries, const ellery::SteamGen &component, ellery::TubeStates &tubes)
{
    QList<int> hits(qsizetype(entries.size()), 0);
    for (size_t i = entries.size(); i-- > 0;)
        hits[qsizetype(i)] = entries[i]->paint(component, tubes);
    return hits;
}

} // namespace map

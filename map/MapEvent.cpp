#include "MapEvent.h"

#include <algorithm>

namespace map {

namespace {

/// Compares the entries at one place. Their pointers differ.
MapEvent::Changes changesOf(const plans::MapFill &before, const plans::MapFill &after)
{
    MapEvent::Changes changes;
    if (before.shown != after.shown)
        changes |= MapEvent::Shown;
    if (before.mark != after.mark)
        changes |= MapEvent::Marks;
    if (before.label != after.label)
        changes |= MapEvent::Labels;
    if (before.tubes != after.tubes || before.fillCount != after.fillCount || before.allSections != after.allSections)
        changes |= MapEvent::Tubes;
    return changes;
}

void compareEntries(const Entries &before, const Entries &after, MapEvent &event)
{
    const size_t common = std::min(before.size(), after.size());
    if (before.size() != after.size())
        event.what |= MapEvent::EntryList;
    for (size_t i = 0; i < after.size(); ++i) {
        if (i < common && isSame(before[i], after[i]))
            continue;
        event.entries.append(int(i));
        const bool wasThere = std::find(before.begin(), before.end(), after[i]) != before.end();
        const MapEvent::Changes changes =
            i < common && !wasThere ? changesOf(*before[i], *after[i]) : MapEvent::Changes(MapEvent::EntryList);
        // Other parameters, or another kind of fill.
        event.what |= changes ? changes : MapEvent::Changes(MapEvent::EntryList);
        if (i < common && before[i]->typeKey != after[i]->typeKey)
            event.what |= MapEvent::EntryList;
    }
}

} // namespace

MapEvent MapEvent::between(const MapState &before, const MapState &after)
{
    MapEvent event;
    compareEntries(before.entries, after.entries, event);
    if (before.selection != after.selection)
        event.what |= Selection;
    if (before.xOrientation != after.xOrientation || before.yOrientation != after.yOrientation)
        event.what |= Orientation;
    if (before.header != after.header)
        event.what |= Header;
    if (before.description != after.description)
        event.what |= Description;
    return event;
}

} // namespace map

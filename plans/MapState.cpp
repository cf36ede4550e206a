#include "MapState.h"

#include <algorithm>

namespace plans {

namespace {

using SharedFill = std::shared_ptr<const MapFill>;

bool isSame(const SharedFill &a, const SharedFill &b)
{
    return a == b || (a->typeKey == b->typeKey && a->isSameAs(*b));
}

/// The entry as some earlier moment has it, looked for at its old place first, since entries seldom move.
SharedFill sharedCopy(const MapFill &fill, size_t place, const std::vector<SharedFill> &earlier)
{
    const auto fits = [&fill](const SharedFill &other) {
        return other->typeKey == fill.typeKey && other->isSameAs(fill);
    };
    if (place < earlier.size() && fits(earlier[place]))
        return earlier[place];
    const auto found = std::find_if(earlier.begin(), earlier.end(), fits);
    return found != earlier.end() ? *found : SharedFill(fill.clone());
}

} // namespace

MapState MapState::capture(const MapLegend &legend, const MapExtras &extras, const MapState &previous)
{
    MapState state;
    state.m_entries.reserve(size_t(legend.count()));
    for (int i = 0; i < legend.count(); ++i)
        state.m_entries.push_back(sharedCopy(legend.entry(i), size_t(i), previous.m_entries));
    state.m_selection = legend.tubes().selection();
    if (state.m_selection == previous.m_selection)
        state.m_selection = previous.m_selection;
    state.m_extras = extras == previous.m_extras ? previous.m_extras : extras;
    return state;
}

void MapState::restore(MapLegend &legend) const
{
    MapLegend::Entries entries;
    entries.reserve(m_entries.size());
    for (const SharedFill &fill : m_entries)
        entries.push_back(fill->clone());
    legend.tubes().setSelection(m_selection);
    legend.replaceEntries(std::move(entries));
}

bool MapState::hasSameEntries(const MapState &other) const
{
    return std::equal(m_entries.begin(), m_entries.end(), other.m_entries.begin(), other.m_entries.end(), isSame);
}

bool MapState::operator==(const MapState &other) const
{
    return m_selection == other.m_selection && m_extras == other.m_extras && hasSameEntries(other);
}

bool MapState::isStoredLike(const MapState &other) const
{
    return m_extras.header == other.m_extras.header && hasSameEntries(other);
}

} // namespace plans

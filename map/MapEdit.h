#pragma once
#include "MapState.h"

namespace map {

/// A change in progress. Works on a copy of the state. Places of entries must exist.
class MapEdit
{
public:
    /// From this place on, entries keep their own symbol.
    static constexpr int kAutoSymbols = 26;

    explicit MapEdit(const MapState &state)
        : m_state(state)
    {
    }
    const MapState &state() const { return m_state; }
    int count() const { return int(m_state.entries.size()); }
    const plans::MapFill &entry(int place) const { return *m_state.entries[size_t(place)]; }

    /// Appends a fill. autoSymbol: the first 26 entries get the letters "A" to "Z". Returns its place.
    int addEntry(std::unique_ptr<plans::MapFill> fill, bool autoSymbol);
    void replaceEntry(int place, std::unique_ptr<plans::MapFill> fill);
    void removeEntry(int place);
    void removeAll();
    /// to is clamped to the list. Returns the new place of the entry.
    int moveEntry(int from, int to);
    void setEntries(const Entries &entries) { m_state.entries = entries; }

    void setMark(int place, const ellery::TubeMark &mark);
    void setShown(int place, bool shown);
    void setLabel(int place, const QString &label);
    void setAllSections(int place, bool allSections);

    void setSelection(const QList<qint32> &tubes);
    void setOrientation(int x, int y);
    void setHeader(const MapHeader &header) { m_state.header = header; }
    void setDescription(const QString &description) { m_state.description = description; }

private:
    template <typename Change>
    void changeEntry(int place, Change change);

    MapState m_state;
};

/// Symbol of a fill when it is added to a legend with this number of entries.
ellery::Symbol nextSymbol(int count, const plans::MapFill &fill, bool autoSymbol);

} // namespace map

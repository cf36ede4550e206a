#pragma once
#include "MapState.h"

namespace map {

/// A change of a map while it is being made: works on a copy of the map's state. Places of entries must exist.
class MapEdit
{
public:
    /// Entries from here on keep the symbol they came with.
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
    /// to is clamped to the list. Returns where the entry is then.
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

/// The symbol that a fill gets as a further entry of a legend with so many.
ellery::Symbol nextSymbol(int count, const plans::MapFill &fill, bool autoSymbol);

} // namespace map

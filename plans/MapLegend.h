#pragma once
#include "MapFill.h"

#include <functional>
#include <vector>

namespace plans {

/// The ordered legend of fills. Where entries overlap, the later one shows. Logic only: views listen to changed().
class MapLegend
{
public:
    explicit MapLegend(ellery::SteamGen &steamGen) : m_steamGen(&steamGen) {}

    int count() const { return int(m_entries.size()); }
    MapFill &entry(int index) { return *m_entries[size_t(index)]; }
    const MapFill &entry(int index) const { return *m_entries[size_t(index)]; }

    /// With autoSymbol the first 26 entries get the letters "A" to "Z". Appends and repaints.
    void addEntry(std::unique_ptr<MapFill> fill, bool autoSymbol);
    /// Clears symbol and colour of its tubes, removes it, repaints.
    void deleteEntry(int index);
    void clear();
    /// to is held within the list.
    void moveEntry(int from, int to);
    void setSymbol(int index, char16_t symbol, quint32 colour, MapHost &host);
    void setShown(int index, bool shown);
    void setLabel(int index, const QString &label);
    /// Removes tube indices the steam generator does not have; returns how many.
    int dropInvalidTubes();
    /// Clears all symbols, then paints the entries from the last to the first.
    void repaint();
    /// Recomputes every entry in order, each seeing the symbols of those before it, then repaints ("Update Map").
    void updateAll(MapHost &host);

    /// A deep copy of the entries, and back: for undo and for failed loads.
    std::vector<std::unique_ptr<MapFill>> copyEntries() const;
    void replaceEntries(std::vector<std::unique_ptr<MapFill>> entries);

    /// A 32-bit count, then each entry: version 4, key, the fill. An unknown key throws JFileError naming it; the legend is
    /// then as before.
    void serialize(tarnwick::JFile &file);

    /// Called after every change.
    std::function<void()> changed;

private:
    void notify();
    ellery::SteamGen *m_steamGen;
    std::vector<std::unique_ptr<MapFill>> m_entries;
};

} // namespace plans

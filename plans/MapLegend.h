#pragma once
#include "MapFill.h"

#include <functional>
#include <vector>

namespace plans {

/// The ordered legend of fills. Where entries overlap, the later one shows. Logic only: views listen to changed().
class MapLegend
{
public:
    using Entries = std::vector<std::unique_ptr<MapFill>>;

    /// Entries from here on keep the symbol they came with.
    static constexpr int kAutoSymbols = 26;

    explicit MapLegend(const ellery::SteamGen &steamGen)
        : m_steamGen(&steamGen)
        , m_tubes(steamGen.numTube())
    {
    }
    /// Another component: the legend is emptied, nothing is selected.
    void setSteamGen(const ellery::SteamGen &steamGen);
    /// The marks that the entries paint, and the selection.
    ellery::TubeStates &tubes() { return m_tubes; }
    const ellery::TubeStates &tubes() const { return m_tubes; }

    int count() const { return int(m_entries.size()); }
    MapFill &entry(int index) { return *m_entries[size_t(index)]; }
    const MapFill &entry(int index) const { return *m_entries[size_t(index)]; }
    /// -1 when the legend does not hold it.
    int indexOf(const MapFill &fill) const;

    /// The symbol that a fill would be added with.
    char16_t nextSymbol(const MapFill &fill, bool autoSymbol) const;
    /// With autoSymbol the first 26 entries get the letters "A" to "Z". Appends and repaints.
    void addEntry(std::unique_ptr<MapFill> fill, bool autoSymbol);
    /// Clears symbol and colour of its tubes, removes it, repaints.
    void deleteEntry(int index);
    void clear();
    /// to is held within the list.
    void moveEntry(int from, int to);
    void setSymbol(int index, char16_t symbol, quint32 colour, MapHost &host);
    void setShown(int index, bool shown);
    /// Which entries are painted, one flag an entry, with a single repaint.
    void setShown(const QList<bool> &shown);
    void setLabel(int index, const QString &label);
    void setAllSections(int index, bool allSections);
    /// Takes over a changed fill of the same kind: its old tubes count as open again, it is computed, the legend
    /// repainted. When computing fails, which is thrown on, the entry is as it was.
    void replaceEntry(int index, const MapFill &fill, MapHost &host);
    /// Removes tube indices the steam generator does not have; returns how many.
    int dropInvalidTubes();
    /// Clears all symbols, then paints the entries from the last to the first.
    void repaint();
    /// Recomputes every entry in order, each seeing the symbols of those before it, then repaints ("Update Map"). The
    /// progress, which may be null, can stop it; the entries are then as they were, as they are after a failure, which
    /// is thrown on. Entries at the places of left are not computed, only painted. False when it was stopped.
    bool updateAll(MapHost &host, tarnwick::Progress *progress = nullptr, const QList<int> &left = {});

    /// Deep copies of the entries, and back: for undo, files and loads that fail. Replacing repaints.
    Entries copyEntries() const;
    void replaceEntries(Entries entries);

    /// A 32-bit count, then each entry: version 4, key, the fill. A failed read, an unknown key among them, throws
    /// JFileError naming it; the legend is then as before.
    void serialize(tarnwick::JFile &file);
    /// The entries of map files of version 1 and 2.
    void readOldFormat(tarnwick::JFile &file);
    /// The same for a list that no legend shows yet. Tube indices that a component of so many tubes does not have are
    /// left out, and an entry without a symbol gets "A".
    static Entries readEntries(tarnwick::JFile &file, int tubeCount);
    static Entries readOldEntries(tarnwick::JFile &file, int tubeCount);
    static void writeEntries(tarnwick::JFile &file, const Entries &entries);

    /// Called after every change of the entries or of what was painted.
    std::function<void()> changed;
    /// Called when the entries themselves become others than they were: added, edited, recomputed, moved, deleted. Not
    /// when they are shown or hidden, brought back by undo, or read from a file.
    std::function<void()> edited;

private:
    void clearTubes(const MapFill &fill);
    void paintAll();
    void computeAll(MapHost &host, tarnwick::Progress *progress, const QList<int> &left);
    void notify();
    void noteEdit();

    const ellery::SteamGen *m_steamGen;
    ellery::TubeStates m_tubes;
    Entries m_entries;
};

} // namespace plans

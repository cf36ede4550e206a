#include "MapLegend.h"

#include "Messages.h"
#include "QuerySource.h"

#include <algorithm>
#include <optional>
#include <tarnwick/base/Error.h>

namespace plans {

namespace {

/// Parameters known from the last time are not asked for while the whole map is recomputed, and queries can be stopped.
class QuietQueries
{
public:
    QuietQueries(QuerySource &source, tarnwick::Progress *progress)
        : m_source(source)
    {
        m_source.setQuiet(true);
        m_source.setProgress(progress);
    }
    ~QuietQueries()
    {
        m_source.setProgress(nullptr);
        m_source.setQuiet(false);
    }
    QuietQueries(const QuietQueries &) = delete;
    QuietQueries &operator=(const QuietQueries &) = delete;

private:
    QuerySource &m_source;
};

} // namespace

void MapLegend::setSteamGen(const ellery::SteamGen &steamGen)
{
    m_entries.clear();
    m_steamGen = &steamGen;
    m_tubes = ellery::TubeStates(steamGen.numTube());
    repaint();
}

int MapLegend::indexOf(const MapFill &fill) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&fill](const auto &entry) { return entry.get() == &fill; });
    return found == m_entries.end() ? -1 : int(found - m_entries.begin());
}

void MapLegend::notify()
{
    if (changed)
        changed();
}

void MapLegend::noteEdit()
{
    if (edited)
        edited();
}

void MapLegend::addEntry(std::unique_ptr<MapFill> fill, bool autoSymbol)
{
    fill->symbol = nextSymbol(*fill, autoSymbol);
    m_entries.push_back(std::move(fill));
    noteEdit();
    repaint();
}

void MapLegend::clearTubes(const MapFill &fill)
{
    for (const qint32 tube : fill.tubes)
        m_tubes.setMark(tube, {});
}

void MapLegend::deleteEntry(int index)
{
    clearTubes(entry(index));
    m_entries.erase(m_entries.begin() + index);
    noteEdit();
    repaint();
}

void MapLegend::clear()
{
    m_entries.clear();
    noteEdit();
    repaint();
}

void MapLegend::moveEntry(int from, int to)
{
    to = std::clamp(to, 0, count() - 1);
    if (from == to)
        return;
    const auto begin = m_entries.begin();
    if (from < to)
        std::rotate(begin + from, begin + from + 1, begin + to + 1);
    else
        std::rotate(begin + to, begin + from, begin + from + 1);
    noteEdit();
    repaint();
}

void MapLegend::setSymbol(int index, char16_t symbol, quint32 colour, MapHost &host)
{
    MapFill &fill = entry(index);
    fill.symbol = symbol;
    fill.colour = colour;
    fill.symbolChanged(host);
    noteEdit();
    repaint();
}

char16_t MapLegend::nextSymbol(const MapFill &fill, bool autoSymbol) const
{
    return autoSymbol && count() < kAutoSymbols ? char16_t(u'A' + count()) : fill.symbol;
}

void MapLegend::setShown(int index, bool shown)
{
    entry(index).shown = shown;
    repaint();
}

void MapLegend::setShown(const QList<bool> &shown)
{
    for (int i = 0; i < count() && i < shown.size(); ++i)
        entry(i).shown = shown[i];
    repaint();
}

void MapLegend::setLabel(int index, const QString &label)
{
    entry(index).label = label;
    noteEdit();
    notify();
}

void MapLegend::setAllSections(int index, bool allSections)
{
    entry(index).allSections = allSections;
    noteEdit();
    repaint();
}

void MapLegend::replaceEntry(int index, const MapFill &fill, MapHost &host)
{
    MapFill &target = entry(index);
    const auto before = target.clone();
    clearTubes(target);
    try {
        target.assign(fill);
        target.label = target.entryLabel();
        target.compute(host);
    } catch (...) {
        target.assign(*before);
        repaint();
        throw;
    }
    noteEdit();
    repaint();
}

int MapLegend::dropInvalidTubes()
{
    int dropped = 0;
    for (const auto &fill : m_entries)
        dropped += fill->dropInvalidTubes(m_steamGen->numTube());
    if (dropped > 0) {
        noteEdit();
        repaint();
    }
    return dropped;
}

void MapLegend::paintAll()
{
    m_tubes.clearMarks();
    for (auto fill = m_entries.rbegin(); fill != m_entries.rend(); ++fill)
        (*fill)->paint(*m_steamGen, m_tubes);
}

void MapLegend::repaint()
{
    paintAll();
    notify();
}

void MapLegend::computeAll(MapHost &host, tarnwick::Progress *progress, const QList<int> &left)
{
    std::optional<BusyCursor> busy;
    if (!progress) // which is there to be clicked
        busy.emplace(host);
    const QuietQueries quiet(host.queries(), progress);
    host.prompts().status(messages::kUpdateBegins);
    m_tubes.clearMarks();
    for (int i = 0; i < count(); ++i) {
        const QString status = tarnwick::format(messages::kUpdatingEntry.text, i + 1, entry(i).label);
        host.prompts().showStatus(status);
        if (progress) {
            progress->report(i, count(), status);
            if (progress->cancelled())
                throw tarnwick::Cancelled();
        }
        if (!left.contains(i))
            entry(i).compute(host);
        entry(i).paint(*m_steamGen, m_tubes);
    }
}

bool MapLegend::updateAll(MapHost &host, tarnwick::Progress *progress, const QList<int> &left)
{
    host.undoCheckpoint(QStringLiteral("Update Map"));
    Entries before = copyEntries();
    const auto takeBack = [&] {
        replaceEntries(std::move(before));
        host.redrawMap();
        host.refreshLegend();
    };
    try {
        computeAll(host, progress, left);
    } catch (const tarnwick::Cancelled &) {
        takeBack();
        host.prompts().status(messages::kUpdateCancelled);
        return false;
    } catch (...) {
        takeBack();
        throw;
    }
    noteEdit();
    repaint();
    host.redrawMap();
    host.refreshLegend();
    host.prompts().status(messages::kUpdateDone);
    return true;
}

MapLegend::Entries MapLegend::copyEntries() const
{
    Entries copies;
    copies.reserve(m_entries.size());
    for (const auto &fill : m_entries)
        copies.push_back(fill->clone());
    return copies;
}

void MapLegend::replaceEntries(Entries entries)
{
    m_entries = std::move(entries);
    repaint();
}

} // namespace plans

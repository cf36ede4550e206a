#include "SteamGen.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace ellery {

void SteamGen::setTubes(const QList<Tube> &tubes)
{
    m_tubes = tubes;
    m_index.clear();
    m_index.reserve(tubes.size());
    m_rowCol.clear();
    m_numSection = 1;
    m_severalSections = false;
    for (int i = 0; i < tubes.size(); ++i) {
        const TubeAddress &address = tubes[i].address;
        const quint64 tubeKey = key(address.row, address.col, address.sec);
        if (!m_index.contains(tubeKey))
            m_index.insert(tubeKey, i);
        m_numSection = std::max(m_numSection, address.sec + 1);
        m_severalSections = m_severalSections || address.sec != tubes[0].address.sec;
    }
    const size_t count = size_t(tubes.size());
    m_symbols.assign(count, 0);
    m_colours.assign(count, 0);
    m_selected.assign(count, 0);
    m_marked.assign(count, 0);
    m_symbolCount = 0;
    m_selectedCount = 0;
}

quint64 SteamGen::key(int row, int col, int sec)
{
    return quint64(quint16(sec)) << 32 | quint64(quint16(row)) << 16 | quint16(col);
}

int SteamGen::findTube(int row, int col, int sec) const
{
    // A number beyond 16 bits would otherwise find the tube of its lower half.
    if (row != qint16(row) || col != qint16(col) || sec != qint16(sec))
        return -1;
    return m_index.value(key(row, col, sec), -1);
}

const QList<int> &SteamGen::sortRowCol() const
{
    if (m_rowCol.size() != m_tubes.size()) {
        m_rowCol.resize(m_tubes.size());
        std::iota(m_rowCol.begin(), m_rowCol.end(), 0);
        std::stable_sort(m_rowCol.begin(), m_rowCol.end(), [this](int left, int right) {
            const TubeAddress &a = m_tubes[left].address;
            const TubeAddress &b = m_tubes[right].address;
            return std::tie(a.row, a.col, a.sec) < std::tie(b.row, b.col, b.sec);
        });
    }
    return m_rowCol;
}

int SteamGen::maxNumber(Axis axis) const
{
    if (axis == Axis::Leg)
        return int(axisLabels(axis).size()) - 1;
    int highest = -1;
    for (const Tube &tube : m_tubes) {
        const TubeAddress &a = tube.address;
        highest = std::max<int>(highest, axis == Axis::Row ? a.row : axis == Axis::Col ? a.col : a.sec);
    }
    return highest;
}

const LandmarkSet *SteamGen::getLandmarkSet(int tubeIndex) const
{
    if (tubeIndex < 0 || tubeIndex >= numTube())
        return nullptr;
    for (const LandmarkSet &set : landmarkSets) {
        if (set.appliesTo(m_tubes[tubeIndex]))
            return &set;
    }
    return nullptr;
}

void SteamGen::setSymbol(int tube, char16_t symbol, quint32 colour)
{
    char16_t &current = m_symbols[size_t(tube)];
    m_symbolCount += int(symbol != 0) - int(current != 0);
    current = symbol;
    m_colours[size_t(tube)] = colour;
}

void SteamGen::clearSymbols()
{
    std::fill(m_symbols.begin(), m_symbols.end(), char16_t(0));
    std::fill(m_colours.begin(), m_colours.end(), 0u);
    m_symbolCount = 0;
}

void SteamGen::setSelected(int tube, bool selected)
{
    quint8 &current = m_selected[size_t(tube)];
    m_selectedCount += int(selected) - int(current);
    current = selected ? 1 : 0;
}

void SteamGen::clearSelection()
{
    std::fill(m_selected.begin(), m_selected.end(), quint8(0));
    m_selectedCount = 0;
}

void SteamGen::clearMarks()
{
    std::fill(m_marked.begin(), m_marked.end(), quint8(0));
}

QList<qint32> SteamGen::selection() const
{
    QList<qint32> indices;
    indices.reserve(m_selectedCount);
    for (int i = 0; i < numTube(); ++i) {
        if (isSelected(i))
            indices.append(i);
    }
    return indices;
}

void SteamGen::setSelection(const QList<qint32> &tubes)
{
    clearSelection();
    for (const qint32 tube : tubes) {
        if (tube >= 0 && tube < numTube())
            setSelected(tube, true);
    }
}

} // namespace ellery

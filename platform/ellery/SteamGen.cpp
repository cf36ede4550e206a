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
        const quint64 tubeKey = key(address);
        if (!m_index.contains(tubeKey))
            m_index.insert(tubeKey, i);
        m_numSection = std::max(m_numSection, address.sec + 1);
        m_severalSections = m_severalSections || address.sec != tubes[0].address.sec;
    }
}

quint64 SteamGen::key(const TubeAddress &address)
{
    return quint64(quint16(address.sec)) << 32 | quint64(quint16(address.row)) << 16 | quint16(address.col);
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

} // namespace ellery

#include "MapScene.h"

#include "TubesheetOutline.h"

namespace brannock {

/// At half a pitch discs would touch; the rest is for the ring of selected tubes.
static constexpr double kRadiusPerPitch = 0.43;
/// Minimum distance between a stay rod's centre and a tube at which they do not touch.
static constexpr double kClearPerPitch = 0.9;
/// Distance from the outermost tube centres to the tubesheet's edge.
static constexpr double kEdgePerPitch = 1.25;
/// Previewed colours leave marks that no tube uses; above this number unused marks are removed.
static constexpr size_t kMaxMarks = 8192;

MapScene::MapScene(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes, const MapOptions &mapOptions)
    : options(mapOptions)
{
    setModel(steamGen, tubes);
}

double MapScene::radius() const
{
    return m_pitch * kRadiusPerPitch;
}

void MapScene::setModel(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes)
{
    m_tubes = steamGen.tubes();
    m_stayRods = steamGen.stayRods;
    m_grid = ellery::TubeGrid(m_tubes);
    m_pitch = m_grid.spacing();
    if (!(m_pitch > 0))
        m_pitch = steamGen.pitch > 0 ? double(steamGen.pitch) : 1;
    std::vector<QPointF> points;
    points.reserve(size_t(m_tubes.size() + m_stayRods.size()));
    const auto &bounds = m_grid.bounds();
    m_grid.visit(bounds.left, bounds.bottom, bounds.right, bounds.top,
                 [&](const ellery::TubeGrid::Entry &entry) { points.emplace_back(entry.x, entry.y); });
    for (const ellery::Mark &rod : m_stayRods)
        points.emplace_back(rod.x, rod.y);
    m_rodsKeepClear = std::none_of(m_stayRods.begin(), m_stayRods.end(), [this](const ellery::Mark &rod) {
        return m_grid.nearest(double(rod.x), double(rod.y), m_pitch * kClearPerPitch) >= 0;
    });
    m_outline = tubesheetOutline(std::move(points), m_pitch * kEdgePerPitch);
    m_rows = makeTickAxis(steamGen, ellery::Axis::Row, m_pitch);
    m_cols = makeTickAxis(steamGen, ellery::Axis::Col, m_pitch);
    if (m_rows.straight && m_cols.straight && m_rows.vertical == m_cols.vertical)
        m_cols.straight = false;
    m_looks.assign(size_t(m_tubes.size()), 0);
    m_marks.assign(1, TubeMark());
    m_markIndex.clear();
    ++m_generation;
    update(tubes);
}

quint32 MapScene::markIndex(const TubeMark &mark)
{
    if (mark.isOpen())
        return 0;
    const quint64 key = quint64(mark.colour.value()) << 16 | mark.symbol.character();
    auto found = m_markIndex.constFind(key);
    if (found == m_markIndex.constEnd()) {
        found = m_markIndex.insert(key, quint32(m_marks.size()));
        m_marks.push_back(mark);
    }
    return *found;
}

void MapScene::deselect()
{
    for (quint32 &look : m_looks)
        look &= ~quint32(1);
}

MapScene::Change MapScene::update(const ellery::TubeStates &tubes)
{
    Change change;
    if (m_marks.size() > kMaxMarks) {
        m_marks.assign(1, TubeMark());
        m_markIndex.clear();
        m_looks.assign(m_looks.size(), ~quint32(1));
        ++m_generation;
    }
    const int count = std::min(numTube(), tubes.count());
    for (int i = 0; i < count; ++i) {
        const TubeMark now = tubes.isOpen(i) ? TubeMark() : tubes.mark(i);
        const quint32 before = m_looks[size_t(i)];
        const bool known = (before >> 1) < m_marks.size() && m_marks[before >> 1] == now;
        const quint32 after = (known ? before & ~quint32(1) : markIndex(now) << 1) | quint32(tubes.isSelected(i));
        if (before == after)
            continue;
        m_looks[size_t(i)] = after;
        change.tubes.append(i);
        change.selection = change.selection || ((before ^ after) & 1) != 0;
        change.onlySelected = change.onlySelected && after == (before | 1);
    }
    return change;
}

} // namespace brannock

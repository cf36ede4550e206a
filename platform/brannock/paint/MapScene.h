#pragma once
#include "MapColours.h"
#include "TickAxis.h"

#include <ellery/TubeGrid.h>
#include <ellery/TubeStates.h>
#include <QHash>
#include <QList>
#include <QPolygonF>
#include <QRectF>
#include <vector>

namespace brannock {

using ellery::TubeMark;

/// Input of the painter: a copy of a steam generator's tubes and their states, prepared for painting, with the options.
/// Does not watch its sources; call setModel() and update() after they have changed.
class MapScene
{
public:
    /// Result of update().
    struct Change
    {
        QList<qint32> tubes;      ///< tubes whose look has changed, ascending
        bool onlySelected = true; ///< true if the only change is that these tubes were selected
        bool selection = false;   ///< true if any tube was selected or deselected
    };

    MapScene() = default;
    /// Without states all tubes are open.
    explicit MapScene(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes = {},
                      const MapOptions &mapOptions = {});

    /// Copies tubes, stay rods and labels, then the map state.
    void setModel(const ellery::SteamGen &steamGen, const ellery::TubeStates &tubes);
    /// Copies marks and selection of the same tubes.
    Change update(const ellery::TubeStates &tubes);
    /// Paints no tube as selected until the next update().
    void deselect();
    void clear() { *this = MapScene(); }

    MapOptions options;
    QString watermark; ///< large faint text on the tubesheet, behind the tubes

    int numTube() const { return int(m_looks.size()); }
    bool isEmpty() const { return m_looks.empty(); }
    const ellery::TubeGrid &grid() const { return m_grid; }
    QPointF position(int tube) const { return {m_tubes[tube].x, m_tubes[tube].y}; }
    const ellery::Tube &tube(int index) const { return m_tubes[index]; }
    const QList<ellery::Mark> &stayRods() const { return m_stayRods; }
    /// True if no stay rod is so near to a tube that they could touch.
    bool rodsKeepClear() const { return m_rodsKeepClear; }
    /// Distance between neighbouring tubes, measured from their positions; never 0.
    double pitch() const { return m_pitch; }
    /// Radius of the tubes' discs, in map coordinates.
    double radius() const;
    /// Edge of the tubesheet and its bounding rectangle.
    const QPolygonF &outline() const { return m_outline; }
    QRectF bounds() const { return m_outline.boundingRect(); }
    const TickAxis &rows() const { return m_rows; }
    const TickAxis &cols() const { return m_cols; }

    /// Number of a tube's look: twice the index of its mark, plus 1 if it is selected.
    quint32 look(int tube) const { return m_looks[size_t(tube)]; }
    bool isSelected(int tube) const { return look(tube) & 1; }
    const TubeMark &mark(int tube) const { return m_marks[look(tube) >> 1]; }
    const TubeMark &markOfLook(quint32 look) const { return m_marks[look >> 1]; }
    quint32 numLooks() const { return quint32(m_marks.size()) * 2; }
    /// Incremented when looks are renumbered; caches by look are then invalid.
    quint32 looksGeneration() const { return m_generation; }

private:
    quint32 markIndex(const TubeMark &mark);

    QList<ellery::Tube> m_tubes;
    QList<ellery::Mark> m_stayRods;
    ellery::TubeGrid m_grid;
    double m_pitch = 1;
    QPolygonF m_outline;
    bool m_rodsKeepClear = true;
    TickAxis m_rows;
    TickAxis m_cols;
    std::vector<quint32> m_looks;
    std::vector<TubeMark> m_marks = std::vector<TubeMark>(1);
    QHash<quint64, quint32> m_markIndex;
    quint32 m_generation = 0;
};

} // namespace brannock

#pragma once
#include "Tube.h"

#include <QList>
#include <QPointF>
#include <vector>

namespace ellery {

/// Spatial index of the tubes: finds the tube at a point and the tubes in an area without checking all tubes. Positions
/// are sorted into square cells of a few tubes each. Coordinates and distances are those of the map (see Tube).
/// Positions that are not finite are ignored. Lists of tubes have ascending indices.
class TubeGrid
{
public:
    /// A tube in the order of the cells.
    struct Entry
    {
        float x = 0;
        float y = 0;
        qint32 tube = -1; ///< index into the list of tubes
    };
    /// Bounding rectangle of all tube centres; empty (right < left) if there are no tubes.
    struct Bounds
    {
        double left = 0;
        double bottom = 0;
        double right = -1;
        double top = -1;
    };

    TubeGrid() = default;
    explicit TubeGrid(const QList<Tube> &tubes);

    int count() const { return int(m_entries.size()); }
    const Bounds &bounds() const { return m_bounds; }
    /// Typical distance from a tube to its nearest neighbour: the pitch on the map. 0 for fewer than two tubes.
    double spacing() const;

    /// The nearest tube within maxDistance of the point, or -1. Among equally near tubes the lowest index.
    int nearest(double x, double y, double maxDistance) const;
    /// Tubes whose distance (square root of dx² + dy² in double precision) is at most the radius.
    QList<qint32> within(double x, double y, double radius) const;
    /// Tubes whose centre is in the rectangle, including its edges. The corners may be given in any order.
    QList<qint32> inRect(double x1, double y1, double x2, double y2) const;
    /// Tubes whose centre is inside the closed polygon (winding rule, so self-intersecting loops are filled).
    QList<qint32> inPolygon(const QList<QPointF> &points) const;

    /// Calls visitor(const Entry &) for every tube in the rectangle, including its edges, in the order of the cells:
    /// left to right within a strip, strips from bottom to top.
    template <typename Visitor>
    void visit(double left, double bottom, double right, double top, Visitor &&visitor) const
    {
        if (m_entries.empty() || !(left <= right && bottom <= top))
            return;
        const int firstCol = colAt(left);
        const int lastCol = colAt(right);
        const int lastRow = rowAt(top);
        for (int row = rowAt(bottom); row <= lastRow; ++row) {
            const qint32 end = m_starts[size_t(row * m_numCol + lastCol + 1)];
            for (qint32 i = m_starts[size_t(row * m_numCol + firstCol)]; i < end; ++i) {
                const Entry &entry = m_entries[size_t(i)];
                if (entry.x >= left && entry.x <= right && entry.y >= bottom && entry.y <= top)
                    visitor(entry);
            }
        }
    }

private:
    void measure(const QList<Tube> &tubes);
    // Both functions increase with the coordinate, so a tube inside a rectangle is in a cell between those of its
    // corners.
    int colAt(double x) const { return cellAt((x - m_bounds.left) / m_cell, m_numCol); }
    int rowAt(double y) const { return cellAt((y - m_bounds.bottom) / m_cell, m_numRow); }
    static int cellAt(double cell, int count) { return cell <= 0 ? 0 : cell >= count ? count - 1 : int(cell); }
    double nearestNeighbour(const Entry &entry) const;

    Bounds m_bounds;
    double m_cell = 1;
    int m_numCol = 0;
    int m_numRow = 0;
    std::vector<Entry> m_entries; // cell by cell, ascending tube indices within a cell
    std::vector<qint32> m_starts; // index in m_entries of each cell's first tube; one more element for the end
};

} // namespace ellery

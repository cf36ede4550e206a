#pragma once
#include "Tube.h"

#include <QList>
#include <QPointF>
#include <vector>

namespace ellery {

/// Answers "which tube is here" and "which tubes lie within" without walking through all tubes: the tubes' positions
/// sorted into square cells of a few tubes each. Coordinates and distances are the map's own (see Tube). Positions that
/// are not finite numbers are left out. Lists of tubes come back with ascending indices.
class TubeGrid
{
public:
    /// A tube's place in the grid, in the order of the cells.
    struct Entry
    {
        float x = 0;
        float y = 0;
        qint32 tube = -1; ///< index into the list of tubes
    };
    /// The rectangle around all tube centres; empty (right < left) without tubes.
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
    /// The usual distance from a tube to its nearest neighbour: the pitch as it is on the map. 0 with fewer than two
    /// tubes.
    double spacing() const;

    /// The tube nearest to the point and not further away than maxDistance, or -1. Of equally near tubes the lowest
    /// index.
    int nearest(double x, double y, double maxDistance) const;
    /// Tubes whose distance (square root of dx² + dy² in double precision) is not greater than the radius.
    QList<qint32> within(double x, double y, double radius) const;
    /// Tubes whose centre lies in the rectangle, edges included; the corners may be given in any order.
    QList<qint32> inRect(double x1, double y1, double x2, double y2) const;
    /// Tubes whose centre lies inside the closed line of points (winding rule, so loops that cross themselves stay
    /// filled).
    QList<qint32> inPolygon(const QList<QPointF> &points) const;

    /// Calls visitor(const Entry &) for every tube in the rectangle, edges included, in the order of the cells: left to
    /// right within a strip, strips from bottom to top.
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
    // Both grow with the coordinate, so a tube inside a rectangle is in the cells between those of the corners.
    int colAt(double x) const { return cellAt((x - m_bounds.left) / m_cell, m_numCol); }
    int rowAt(double y) const { return cellAt((y - m_bounds.bottom) / m_cell, m_numRow); }
    static int cellAt(double cell, int count) { return cell <= 0 ? 0 : cell >= count ? count - 1 : int(cell); }
    double nearestNeighbour(const Entry &entry) const;

    Bounds m_bounds;
    double m_cell = 1;
    int m_numCol = 0;
    int m_numRow = 0;
    std::vector<Entry> m_entries; // cell by cell, ascending tube indices within a cell
    std::vector<qint32> m_starts; // of each cell in m_entries, and one more for the end
};

} // namespace ellery

#pragma once
#include <QList>

namespace tarnwick {

/// Horizontal positions of a table's columns, in pixels of the viewport: the entry column, the frozen columns, which do
/// not scroll, and the others, which scroll behind them.
class GridLayout
{
public:
    void setColumns(const QList<int> &widths);
    void setEntryWidth(int width) { m_entry = width; }
    /// Columns that would leave the others less than a third of the room are not frozen.
    void setFrozen(int columns);
    /// Width of the viewport in pixels.
    void setRoom(int pixels);
    void setScroll(int pixels) { m_scroll = pixels; }
    void setWidth(int column, int width);

    int count() const { return int(m_widths.size()); }
    int entryWidth() const { return m_entry; }
    int frozen() const { return m_frozen; }
    int scroll() const { return m_scroll; }
    int width(int column) const { return m_widths[column]; }
    const QList<int> &widths() const { return m_widths; }
    /// Left edge in the viewport.
    int x(int column) const;
    /// Width of the part that does not scroll.
    int fixedWidth() const;
    /// Width of the entry column and all columns.
    int totalWidth() const;
    bool isFrozen(int column) const { return column < m_frozen; }
    /// -1 if there is no column; the entry column does not count as one.
    int columnAt(int x) const;
    /// First and last scrolling column that is visible in a viewport of that width; first > last if none is.
    std::pair<int, int> scrolledInSight(int viewportWidth) const;

private:
    void update();

    QList<int> m_widths;
    QList<int> m_starts; ///< left edges without scrolling, beginning at 0; one more element than columns
    int m_entry = 0;
    int m_wantedFrozen = 0;
    int m_frozen = 0; ///< as many as the room permits
    int m_room = 0;
    int m_scroll = 0;
};

} // namespace tarnwick

#pragma once
#include <QList>

namespace tarnwick {

/// Where the columns of a table lie, in pixels of the viewport: first the entry column, then the frozen columns, which
/// stay where they are, then the others, which scroll below them.
class GridLayout
{
public:
    void setColumns(const QList<int> &widths);
    void setEntryWidth(int width) { m_entry = width; }
    void setFrozen(int columns);
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
    /// The edge between what stays and what scrolls.
    int fixedWidth() const;
    /// The entry column and all columns.
    int totalWidth() const;
    bool isFrozen(int column) const { return column < m_frozen; }
    /// -1 where there is none; the entry column is none.
    int columnAt(int x) const;
    /// The first and last column that scroll and are in sight in a viewport of that width; first > last when none is.
    std::pair<int, int> scrolledInSight(int viewportWidth) const;

private:
    void update();

    QList<int> m_widths;
    QList<int> m_starts; ///< left edges without scrolling, beginning at 0; one more than columns
    int m_entry = 0;
    int m_frozen = 0;
    int m_scroll = 0;
};

} // namespace tarnwick

// Places of the rows and cells of tables, and scrolling.
#include "GridFilterRow.h"
#include "GridFindBar.h"
#include "GridHeader.h"
#include "JTableWin.h"

#include <QScrollBar>

#include <algorithm>

namespace tarnwick {

QSize JTableWin::sizeHint() const
{
    constexpr int kMaxWidth = 1000;
    const int frame = 2 * frameWidth();
    const int bars = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    return {std::min(m_layout.totalWidth(), kMaxWidth) + frame + bars,
            m_header->sizeHint().height() + m_visibleRows * m_rowHeight + frame + bars};
}

std::pair<int, int> JTableWin::rowsInSight() const
{
    return {firstRow(), std::min(pageRows(), m_grid.rowCount() - firstRow())};
}

int JTableWin::firstRow() const
{
    return verticalScrollBar()->value();
}

int JTableWin::verticalOffset() const
{
    return firstRow() * m_rowHeight;
}

int JTableWin::pageRows() const
{
    return std::max(1, viewport()->height() / m_rowHeight);
}

int JTableWin::rowAt(int y) const
{
    const int lines = y >= 0 ? y / m_rowHeight : -((-y + m_rowHeight - 1) / m_rowHeight);
    return firstRow() + lines;
}

QRect JTableWin::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.column() >= m_layout.count())
        return {};
    return {m_layout.x(index.column()), (index.row() - firstRow()) * m_rowHeight, m_layout.width(index.column()),
            m_rowHeight};
}

QModelIndex JTableWin::indexAt(const QPoint &point) const
{
    const int row = rowAt(point.y());
    // A click on the entry number selects its row.
    const int column = point.x() < m_layout.entryWidth() ? 0 : m_layout.columnAt(point.x());
    if (row < 0 || row >= m_grid.rowCount() || column < 0)
        return {};
    return m_grid.index(row, column);
}

void JTableWin::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid() || index.column() >= m_layout.count())
        return;
    const int row = index.row();
    const int page = pageRows();
    if (hint == PositionAtCenter)
        verticalScrollBar()->setValue(row - page / 2);
    else if (hint == PositionAtTop || row < firstRow())
        verticalScrollBar()->setValue(row);
    else if (hint == PositionAtBottom || row >= firstRow() + page)
        verticalScrollBar()->setValue(row - page + 1);
    if (m_layout.isFrozen(index.column()))
        return;
    const int left = m_layout.x(index.column());
    const int right = left + m_layout.width(index.column());
    QScrollBar *bar = horizontalScrollBar();
    if (left < m_layout.fixedWidth())
        bar->setValue(bar->value() - (m_layout.fixedWidth() - left));
    else if (right > viewport()->width())
        bar->setValue(bar->value() + std::min(right - viewport()->width(), left - m_layout.fixedWidth()));
}

void JTableWin::updateGeometries()
{
    const int header = m_header->sizeHint().height();
    const int filter = m_filterRow->isHidden() ? 0 : m_filterRow->sizeHint().height();
    const int find = m_findBar->isHidden() ? 0 : m_findBar->sizeHint().height();
    setViewportMargins(0, header + filter, 0, find);
    const QRect inside = viewport()->geometry();
    m_header->setGeometry(inside.left(), inside.top() - header - filter, inside.width(), header);
    m_filterRow->setGeometry(inside.left(), inside.top() - filter, inside.width(), filter);
    m_findBar->setGeometry(inside.left(), inside.bottom() + 1, inside.width(), find);
    m_layout.setRoom(inside.width());
    m_filterRow->place();

    QScrollBar *rows = verticalScrollBar();
    rows->setRange(0, std::max(0, m_grid.rowCount() - pageRows()));
    rows->setPageStep(pageRows());
    rows->setSingleStep(1);
    QScrollBar *pixels = horizontalScrollBar();
    pixels->setRange(0, std::max(0, m_layout.totalWidth() - viewport()->width()));
    pixels->setPageStep(viewport()->width());
    pixels->setSingleStep(fontMetrics().averageCharWidth() * 4);
    m_layout.setScroll(pixels->value());
    QAbstractItemView::updateGeometries();
}

void JTableWin::resizeEvent(QResizeEvent *event)
{
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void JTableWin::scrollContentsBy(int dx, int dy)
{
    m_layout.setScroll(horizontalScrollBar()->value());
    if (dx != 0) {
        m_header->update();
        m_filterRow->place();
        viewport()->update();
    } else {
        // Scrolling moves whole rows: the rows that stay visible are copied and only the new ones are painted.
        viewport()->scroll(0, dy * m_rowHeight);
    }
    updateEditorGeometries();
}

void JTableWin::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags flags)
{
    const int rows = m_grid.rowCount();
    const int columns = m_layout.count();
    if (rows == 0 || columns == 0)
        return;
    const auto column = [this, columns](int x) {
        const int found = m_layout.columnAt(x);
        return found >= 0 ? found : x < m_layout.fixedWidth() ? 0 : columns - 1;
    };
    const int top = std::clamp(rowAt(rect.top()), 0, rows - 1);
    const int bottom = std::clamp(rowAt(rect.bottom()), 0, rows - 1);
    // Dragging along the entry numbers selects whole rows.
    const bool isEntry = rect.left() < m_layout.entryWidth();
    const int left = isEntry ? 0 : column(rect.left());
    const int right = isEntry ? columns - 1 : column(rect.right());
    selectionModel()->select(
        QItemSelection(m_grid.index(top, std::min(left, right)), m_grid.index(bottom, std::max(left, right))), flags);
}

QRegion JTableWin::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    const int first = firstRow();
    const int last = first + pageRows() + 1;
    for (const QItemSelectionRange &range : selection) {
        const int top = std::max(range.top(), first);
        const int bottom = std::min(range.bottom(), last);
        if (top <= bottom)
            region += QRect(0, (top - first) * m_rowHeight, viewport()->width(), (bottom - top + 1) * m_rowHeight);
    }
    return region;
}

} // namespace tarnwick

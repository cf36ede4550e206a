#include "MovingRows.h"

#include "JTableWin.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

std::pair<QList<int>, int> rowsToMove(const JTableWin &table, int by)
{
    QList<int> rows = table.selectedSourceRows();
    if (rows.isEmpty() && table.currentSourceRow() >= 0)
        rows = {table.currentSourceRow()};
    if (rows.isEmpty())
        return {};
    std::sort(rows.begin(), rows.end());
    const int before = by < 0 ? rows.first() - 1 : rows.last() + 2;
    if (before < 0 || before > table.grid().totalRows())
        return {};
    return {rows, before};
}

void showMoved(JTableWin &table, int first, int count)
{
    GridModel &grid = table.grid();
    grid.noteAllChanged();
    const int column = std::max(0, table.currentIndex().column());
    table.setCurrentIndex(grid.index(grid.shownRow(first), column));
    QItemSelection moved;
    for (int row = first; row < first + count; ++row) {
        const int shown = grid.shownRow(row);
        if (shown >= 0)
            moved.select(grid.index(shown, 0), grid.index(shown, grid.columnCount() - 1));
    }
    table.selectionModel()->select(moved, QItemSelectionModel::ClearAndSelect);
}

static const QString kRows = u"application/x-arvo-rows"_s;

RowDragging::RowDragging(JTableWin &table, const std::function<void(const QList<int> &, int)> &drop)
    : QObject(&table)
    , m_table(table)
    , m_drop(drop)
{
    table.viewport()->setAcceptDrops(true);
    table.viewport()->installEventFilter(this);
}

bool RowDragging::canDrag() const
{
    return m_table.grid().sortKeys().isEmpty() && !m_table.grid().isFiltered();
}

bool RowDragging::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return drag(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent *>(event));
    case QEvent::DragEnter:
    case QEvent::DragMove:
        return takeDrop(*static_cast<QDropEvent *>(event), false);
    case QEvent::Drop:
        return takeDrop(*static_cast<QDropEvent *>(event), true);
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool RowDragging::press(const QMouseEvent &event)
{
    const QModelIndex index = m_table.indexAt(event.position().toPoint());
    m_isPressed = event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier && index.isValid() &&
                  m_table.selectionModel()->isSelected(index) && canDrag();
    m_pressed = event.position().toPoint();
    // The table would clear the selection that is to be dragged.
    return m_isPressed;
}

bool RowDragging::drag(const QMouseEvent &event)
{
    if (!m_isPressed)
        return false;
    const QPoint way = event.position().toPoint() - m_pressed;
    if (way.manhattanLength() < QApplication::startDragDistance())
        return true;
    m_isPressed = false;
    auto *rows = new QMimeData;
    rows->setData(kRows, {});
    auto *dragged = new QDrag(&m_table);
    dragged->setMimeData(rows);
    dragged->exec(Qt::MoveAction);
    return true;
}

bool RowDragging::release(const QMouseEvent &event)
{
    if (!std::exchange(m_isPressed, false))
        return false;
    // It was a click after all.
    m_table.setFocus();
    m_table.setCurrentIndex(m_table.indexAt(event.position().toPoint()));
    return true;
}

bool RowDragging::takeDrop(QDropEvent &event, bool isDropped)
{
    // Rows of another table are not taken.
    const bool isOwn = event.mimeData()->hasFormat(kRows) && (!event.source() || event.source() == &m_table);
    if (!isOwn || !canDrag())
        return false;
    event.setDropAction(Qt::MoveAction);
    event.accept();
    if (!isDropped)
        return true;
    const QPoint place = event.position().toPoint();
    const QModelIndex index = m_table.indexAt(place);
    int before = m_table.grid().totalRows();
    if (index.isValid()) {
        const bool isLowerHalf = place.y() > m_table.visualRect(index).center().y();
        before = m_table.grid().sourceRow(index.row()) + (isLowerHalf ? 1 : 0);
    }
    const QList<int> rows = m_table.selectedSourceRows();
    if (!rows.isEmpty())
        m_drop(rows, before);
    return true;
}

} // namespace tarnwick

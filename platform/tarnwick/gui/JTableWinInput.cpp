// Current row, keys and mouse of tables.
#include "JTableWin.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

int JTableWin::currentSourceRow() const
{
    const QModelIndex index = currentIndex();
    return index.isValid() ? m_grid.sourceRow(index.row()) : -1;
}

void JTableWin::setCurrentSourceRow(int sourceRow)
{
    const int row = m_grid.shownRow(sourceRow);
    if (row >= 0 && m_grid.columnCount() > 0)
        setCurrentIndex(m_grid.index(row, std::max(0, currentIndex().column())));
}

QList<int> JTableWin::selectedSourceRows() const
{
    std::vector<std::pair<int, int>> spans;
    for (const QItemSelectionRange &range : selectionModel()->selection())
        spans.emplace_back(range.top(), range.bottom());
    std::sort(spans.begin(), spans.end());
    QList<int> rows;
    int next = 0;
    for (const auto &[top, bottom] : spans) {
        for (int row = std::max(top, next); row <= bottom; ++row)
            rows.append(m_grid.sourceRow(row));
        next = std::max(next, bottom + 1);
    }
    return rows;
}

void JTableWin::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QAbstractItemView::currentChanged(current, previous);
    if (!QAccessible::isActive() || !current.isValid() || !hasFocus())
        return;
    QAccessibleEvent event(this, QAccessible::Focus); // screen readers read the cell
    event.setChild(current.row() * m_grid.columnCount() + current.column());
    QAccessible::updateAccessibility(&event);
}

void JTableWin::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    refreshActions();
    m_selectionDelay.start();
}

QModelIndex JTableWin::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int rows = m_grid.rowCount();
    const int columns = m_grid.columnCount();
    if (rows == 0 || columns == 0)
        return {};
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return m_grid.index(0, 0);
    const bool ctrl = modifiers.testFlag(Qt::ControlModifier);
    int row = current.row();
    int column = current.column();
    switch (action) {
    case MoveUp:
        row = ctrl ? 0 : row - 1;
        break;
    case MoveDown:
        row = ctrl ? rows - 1 : row + 1;
        break;
    case MovePrevious:
    case MoveLeft:
        column = ctrl ? 0 : column - 1;
        break;
    case MoveNext:
    case MoveRight:
        column = ctrl ? columns - 1 : column + 1;
        break;
    case MoveHome:
        column = 0;
        row = ctrl ? 0 : row;
        break;
    case MoveEnd:
        column = columns - 1;
        row = ctrl ? rows - 1 : row;
        break;
    case MovePageUp:
        row -= pageRows();
        break;
    case MovePageDown:
        row += pageRows();
        break;
    }
    return m_grid.index(std::clamp(row, 0, rows - 1), std::clamp(column, 0, columns - 1));
}

void JTableWin::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (event->key() == Qt::Key_Space && isPlain && toggleMark(currentIndex()))
        return;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && isPlain && state() != EditingState && currentIndex().isValid()) {
        Q_EMIT rowActivated(currentSourceRow());
        return;
    }
    const QString whyNot = currentIndex().data(GridModel::WhyNotEditableRole).toString();
    if (event->key() == Qt::Key_F2 && !whyNot.isEmpty()) {
        QToolTip::showText(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()), whyNot, viewport());
        return;
    }
    // In a dialog Esc means Cancel. While a cell is edited, the editor receives Esc first and only ends the edit.
    if (event->key() == Qt::Key_Escape) {
        event->ignore();
        return;
    }
    const QModelIndex before = currentIndex();
    QAbstractItemView::keyPressEvent(event);
    if (currentIndex() != before)
        viewport()->update();
}

void JTableWin::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && event->position().x() < m_layout.entryWidth() && index.isValid()) {
        setCurrentIndex(index);
        selectionModel()->select(index, selectionCommand(index, event) | QItemSelectionModel::Rows);
        viewport()->update();
        return;
    }
    const QModelIndex before = currentIndex();
    QAbstractItemView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton)
        toggleMark(index);
    if (currentIndex() != before)
        viewport()->update();
}

void JTableWin::mouseDoubleClickEvent(QMouseEvent *event)
{
    QAbstractItemView::mouseDoubleClickEvent(event);
    if (state() != EditingState && indexAt(event->position().toPoint()).isValid())
        Q_EMIT rowActivated(currentSourceRow());
}

bool JTableWin::toggleMark(const QModelIndex &index)
{
    if (!index.isValid() || m_grid.column(index.column()).editor != GridColumn::Editor::Check ||
        !(m_grid.flags(index) & Qt::ItemIsEditable))
        return false;
    const bool isSet = !index.data().toString().isEmpty();
    return m_grid.setData(index, isSet ? u"0"_s : u"1"_s);
}

void JTableWin::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    menu.setToolTipsVisible(true);
    refreshActions();
    for (const char16_t *name :
         {u"copy", u"copyWithTitles", u"", u"find", u"findNext", u"filter", u"", u"sort", u"sortFurther", u"narrower",
          u"wider", u"fitColumns", u"", u"insertRow", u"deleteRows"}) {
        if (*name)
            menu.addAction(action(QString::fromUtf16(name)));
        else
            menu.addSeparator();
    }
    const QPoint below = visualRect(currentIndex()).bottomLeft();
    menu.exec(event->reason() == QContextMenuEvent::Keyboard ? viewport()->mapToGlobal(below) : event->globalPos());
}

} // namespace tarnwick

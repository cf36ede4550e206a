#pragma once
#include <functional>
#include <QList>
#include <QObject>
#include <QPoint>
#include <utility>

class QDropEvent;
class QMouseEvent;

namespace tarnwick {

class JTableWin;

/// Source rows that a command moves up (-1) or down (1): those marked, or the current one; and the row that they then
/// stand before. No rows if they cannot be moved.
std::pair<QList<int>, int> rowsToMove(const JTableWin &table, int by);
/// Marks the rows that were moved.
void showMoved(JTableWin &table, int first, int count);

/// Lets the user drag marked rows of a table to another place. Rows of a sorted or filtered table stay where they are.
class RowDragging : public QObject
{
    Q_OBJECT
public:
    /// drop: called with the marked source rows, and the row that they are to stand before. Owned by the table.
    RowDragging(JTableWin &table, const std::function<void(const QList<int> &rows, int before)> &drop);
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool press(const QMouseEvent &event);
    bool drag(const QMouseEvent &event);
    bool release(const QMouseEvent &event);
    bool takeDrop(QDropEvent &event, bool isDropped);
    bool canDrag() const;

    JTableWin &m_table;
    std::function<void(const QList<int> &, int)> m_drop;
    QPoint m_pressed;
    bool m_isPressed = false;
};

} // namespace tarnwick

#pragma once
#include "GridLayout.h"

#include <tarnwick/GridModel.h>

#include <QWidget>

namespace tarnwick {

/// Titles of a table, painted from the table's layout. Dragging an edge sets a width, a double click on it fits the
/// column, a click on a title sorts (with Shift: adds a sort key).
class GridHeader : public QWidget
{
    Q_OBJECT
public:
    GridHeader(const GridLayout &layout, QWidget *parent);

    /// Model whose titles are shown; read again when it changes.
    void setModel(const GridModel *model);
    void setEntryTitle(const QString &title);
    QSize sizeHint() const override;
    /// Width in pixels of a title with its sort mark.
    int titleWidth(const QString &title) const;

Q_SIGNALS:
    void widthDragged(int column, int width);
    void fitRequested(int column);
    /// isFurther: add the column to the existing sort keys.
    void sortRequested(int column, bool isFurther);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    void paintSection(QPainter &painter, const QRect &rect, const QString &title, int column);
    /// The column whose right edge is near x; -1 if none.
    int edgeAt(int x) const;

    const GridLayout &m_layout;
    const GridModel *m_model = nullptr;
    QString m_entryTitle;
    int m_dragged = -1;   ///< column whose edge is being dragged
    int m_pressed = -1;   ///< column whose title is pressed
    int m_dragOffset = 0; ///< distance from the edge to the pointer when the drag began
};

} // namespace tarnwick

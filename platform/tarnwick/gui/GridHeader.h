#pragma once
#include "GridLayout.h"

#include <tarnwick/GridModel.h>

#include <QWidget>

namespace tarnwick {

/// The titles above a table: painted from the table's layout. Dragging an edge sets a width, a double click on it fits
/// the column, a click on a title sorts (with Shift as a further key).
class GridHeader : public QWidget
{
    Q_OBJECT
public:
    GridHeader(const GridLayout &layout, QWidget *parent);

    /// What is shown; read again when they change.
    void setModel(const GridModel *model);
    void setEntryTitle(const QString &title);
    QSize sizeHint() const override;
    /// Room for a title and the mark of the sort order, in pixels.
    int titleWidth(const QString &title) const;

Q_SIGNALS:
    void widthDragged(int column, int width);
    void fitRequested(int column);
    /// isFurther: added to the keys that are there.
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
    /// The column whose right edge is near x; -1 for none.
    int edgeAt(int x) const;

    const GridLayout &m_layout;
    const GridModel *m_model = nullptr;
    QString m_entryTitle;
    int m_dragged = -1;   ///< the column whose edge is being dragged
    int m_pressed = -1;   ///< the column whose title is held down
    int m_dragOffset = 0; ///< from the edge to the pointer when dragging began
};

} // namespace tarnwick

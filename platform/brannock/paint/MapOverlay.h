#pragma once
#include "MapScene.h"
#include "MapView.h"

#include <QFont>
#include <QPalette>
#include <QStringList>

class QPainter;

namespace brannock {

/// Tool tip card of a tube: its picture, its name and further lines.
struct TubeTip
{
    TubeMark mark;
    bool selected = false;
    QString name;
    QStringList lines;

    QSizeF size(const QFont &font) const;
    /// Position of the card: at this distance from the point, within the viewport.
    QRectF place(const QFont &font, const QPointF &point, double away, const QSizeF &viewport) const;
    void paint(QPainter &painter, const QRectF &rect, const QFont &font, const QPalette &palette,
               const MapOptions &options) const;
};

/// Rings around single tubes, visible on any colour.
void paintHoverRing(QPainter &painter, const QPointF &centre, double radius);
void paintCursor(QPainter &painter, const QPointF &centre, double radius, const QPalette &palette);
/// The rectangle or lasso being drawn, with a count beside its end.
void paintBand(QPainter &painter, const QPolygonF &band, const QPalette &palette);
QRectF countRect(const QString &text, const QFont &font, const QPointF &pointer, const QSizeF &viewport);
void paintCount(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font, const QPalette &palette);

} // namespace brannock

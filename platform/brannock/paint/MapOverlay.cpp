#include "MapOverlay.h"

#include "TubeArt.h"

#include <cmath>
#include <QFontMetricsF>
#include <QPainter>

namespace brannock {

namespace {

QFont bold(QFont font)
{
    font.setBold(true);
    return font;
}

double pictureSize(const QFont &font)
{
    return std::round(QFontMetricsF(font).height() * 1.5);
}

double padding(const QFont &font)
{
    return std::round(QFontMetricsF(font).height() * 0.5);
}

/// Beside the point; if there is no room, on its other side.
double besides(double at, double size, double away, double limit)
{
    const double place = at + away + size <= limit ? at + away : at - away - size;
    return std::round(std::clamp(place, 0.0, std::max(0.0, limit - size)));
}

void paintCard(QPainter &painter, const QRectF &rect, const QPalette &palette)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawRoundedRect(rect.translated(1.5, 2), 4, 4);
    const QColor base = palette.color(QPalette::ToolTipBase);
    painter.setPen(QPen(mixed(base, palette.color(QPalette::ToolTipText), 0.4), 1));
    painter.setBrush(base);
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

} // namespace

QSizeF TubeTip::size(const QFont &font) const
{
    const QFontMetricsF metrics(font);
    double width = QFontMetricsF(bold(font)).horizontalAdvance(name);
    for (const QString &line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    const double text = metrics.height() * double(1 + lines.size());
    const double pad = padding(font);
    return QSizeF(std::ceil(width + pictureSize(font) + 3 * pad),
                  std::ceil(std::max(text, pictureSize(font)) + 2 * pad));
}

QRectF TubeTip::place(const QFont &font, const QPointF &point, double away, const QSizeF &viewport) const
{
    const QSizeF card = size(font);
    return QRectF(QPointF(besides(point.x(), card.width(), away, viewport.width()),
                          besides(point.y(), card.height(), away, viewport.height())),
                  card);
}

void TubeTip::paint(QPainter &painter, const QRectF &rect, const QFont &font, const QPalette &palette,
                    const MapOptions &options) const
{
    painter.save();
    paintCard(painter, rect, palette);
    const double pad = padding(font);
    const double picture = pictureSize(font);
    const TubeArt art = TubeArt::forVectors(options, picture / 1.12);
    const QPointF centre(rect.left() + pad + picture / 2, rect.top() + pad + picture / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fromColourRef(options.mapColour));
    painter.drawRoundedRect(QRectF(centre.x() - picture / 2, centre.y() - picture / 2, picture, picture), 3, 3);
    art.paintTube(painter, centre, mark, selected);
    const double height = QFontMetricsF(font).height();
    QRectF line(rect.left() + 2 * pad + picture, rect.top() + pad, rect.width(), height);
    painter.setPen(palette.color(QPalette::ToolTipText));
    painter.setFont(bold(font));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, name);
    painter.setFont(font);
    for (const QString &text : lines) {
        line.translate(0, height);
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, text);
    }
    painter.restore();
}

void paintHoverRing(QPainter &painter, const QPointF &centre, double radius)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 4));
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(QPen(Qt::black, 2));
    painter.drawEllipse(centre, radius, radius);
    painter.restore();
}

void paintCursor(QPainter &painter, const QPointF &centre, double radius, const QPalette &palette)
{
    painter.save();
    const QRectF frame(std::round(centre.x() - radius) + 0.5, std::round(centre.y() - radius) + 0.5,
                       std::round(2 * radius), std::round(2 * radius));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 4));
    painter.drawRect(frame);
    painter.setPen(QPen(palette.color(QPalette::Highlight), 2));
    painter.drawRect(frame);
    painter.restore();
}

void paintBand(QPainter &painter, const QPolygonF &band, const QPalette &palette)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, band.size() > 5);
    painter.setBrush(Qt::NoBrush);
    QColor filling = palette.color(QPalette::Highlight);
    // A white line below keeps it visible on selected tubes.
    painter.setPen(QPen(QColor(255, 255, 255, 160), 3));
    painter.drawPolygon(band, Qt::WindingFill);
    painter.setPen(QPen(filling, 1));
    filling.setAlpha(50);
    painter.setBrush(filling);
    painter.drawPolygon(band, Qt::WindingFill);
    painter.restore();
}

QRectF countRect(const QString &text, const QFont &font, const QPointF &pointer, const QSizeF &viewport)
{
    const QFontMetricsF metrics(font);
    const QSizeF card(std::ceil(metrics.horizontalAdvance(text) + metrics.height()), std::ceil(metrics.height() * 1.4));
    return QRectF(QPointF(besides(pointer.x(), card.width(), 12, viewport.width()),
                          besides(pointer.y(), card.height(), 12, viewport.height())),
                  card);
}

void paintCount(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font, const QPalette &palette)
{
    painter.save();
    paintCard(painter, rect, palette);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::ToolTipText));
    painter.drawText(rect, Qt::AlignCenter, text);
    painter.restore();
}

} // namespace brannock

#include "MapMarks.h"

#include <QPainter>

namespace brannock {

double MapMarks::ringRadius() const
{
    return std::max(m_scene.pitch() * m_viewport.view().scale * 0.56, 4.0);
}

int MapMarks::namedTube() const
{
    if (hovered >= 0)
        return hovered;
    return isCursorNamed ? cursor : -1;
}

void MapMarks::showCard(const TubeTip &card, const QFont &font)
{
    m_card = card;
    m_cardRect = m_card.place(font, posOf(namedTube()), std::max(16.0, ringRadius() + 4), m_viewport.view().size);
}

QList<MapRulers::Label> MapMarks::labels() const
{
    QList<MapRulers::Label> labels;
    const int tube = hovered >= 0 ? hovered : cursor;
    if (tube < 0)
        return labels;
    for (const ellery::Axis axis : {ellery::Axis::Row, ellery::Axis::Col}) {
        const MapRulers::Label label =
            m_viewport.rulers().labelOf(m_scene, m_viewport.view(), m_viewport.rulerLayout(), axis, tube);
        if (!label.text.isEmpty())
            labels.append(label);
    }
    return labels;
}

QRegion MapMarks::region() const
{
    QRegion region;
    const double reach = ringRadius() + 4;
    for (const int tube : {hovered, cursor}) {
        if (tube >= 0 && tube < m_scene.numTube()) {
            const QPointF at = posOf(tube);
            region |= QRectF(at.x() - reach, at.y() - reach, 2 * reach, 2 * reach).toAlignedRect();
        }
    }
    for (const MapRulers::Label &label : labels())
        region |= label.rect.adjusted(-5, -2, 5, 2).toAlignedRect();
    if (!m_cardRect.isEmpty())
        region |= m_cardRect.adjusted(-1, -1, 4, 5).toAlignedRect();
    return region;
}

void MapMarks::paintLabels(QPainter &painter, const QPalette &palette) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(m_viewport.rulers().font());
    for (const MapRulers::Label &label : labels()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.color(QPalette::Highlight));
        painter.drawRoundedRect(label.rect.adjusted(-4, -1, 4, 1), 3, 3);
        painter.setPen(palette.color(QPalette::HighlightedText));
        painter.drawText(label.rect, Qt::AlignCenter | Qt::TextDontClip, label.text);
    }
    painter.restore();
}

void MapMarks::paint(QPainter &painter, const QFont &font, const QPalette &palette) const
{
    if (cursor >= 0)
        paintCursor(painter, posOf(cursor), ringRadius(), palette);
    if (hovered >= 0)
        paintHoverRing(painter, posOf(hovered), ringRadius());
    paintLabels(painter, palette);
    if (!m_cardRect.isEmpty())
        m_card.paint(painter, m_cardRect, font, palette, m_scene.options);
}

} // namespace brannock

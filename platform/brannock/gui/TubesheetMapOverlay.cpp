#include "TubesheetMap.h"

namespace brannock {

using namespace Qt::StringLiterals;

double TubesheetMap::ringRadius() const
{
    return std::max(m_scene.pitch() * m_view.scale * 0.56, 4.0);
}

QList<MapRulers::Label> TubesheetMap::hoverLabels() const
{
    QList<MapRulers::Label> labels;
    const int tube = m_hovered >= 0 ? m_hovered : m_cursor;
    if (tube < 0)
        return labels;
    for (const ellery::Axis axis : {ellery::Axis::Row, ellery::Axis::Col}) {
        const MapRulers::Label label = m_rulers.labelOf(m_scene, m_view, m_rulerLayout, axis, tube);
        if (!label.text.isEmpty())
            labels.append(label);
    }
    return labels;
}

QRegion TubesheetMap::hoverRegion() const
{
    QRegion region;
    const double reach = ringRadius() + 4;
    for (const int tube : {m_hovered, m_cursor}) {
        if (tube >= 0 && tube < m_scene.numTube()) {
            const QPointF at = posOf(tube);
            region |= QRectF(at.x() - reach, at.y() - reach, 2 * reach, 2 * reach).toAlignedRect();
        }
    }
    for (const MapRulers::Label &label : hoverLabels())
        region |= label.rect.adjusted(-5, -2, 5, 2).toAlignedRect();
    if (!m_tipRect.isEmpty())
        region |= m_tipRect.adjusted(-1, -1, 4, 5).toAlignedRect();
    return region;
}

QRegion TubesheetMap::bandRegion() const
{
    QRegion region;
    if (!m_band.isEmpty())
        region |= m_band.boundingRect().adjusted(-2, -2, 2, 2).toAlignedRect();
    if (!m_bandCountRect.isEmpty())
        region |= m_bandCountRect.adjusted(-1, -1, 4, 5).toAlignedRect();
    return region;
}

void TubesheetMap::setHovered(int tube, const QPointF &pointer)
{
    m_pointer = pointer;
    if (tube == m_hovered)
        return;
    const QRegion before = hoverRegion();
    m_hovered = tube;
    updateTip();
    update(before | hoverRegion());
    Q_EMIT hovered(tube);
}

void TubesheetMap::setTubeTip(bool on)
{
    m_tubeTip = on;
    const QRegion before = hoverRegion();
    updateTip();
    update(before | hoverRegion());
}

void TubesheetMap::setTipHidden(bool hidden)
{
    if (hidden)
        setHovered(-1, {}); // the pointer will be elsewhere by then
    const QRegion before = hoverRegion();
    m_tipHidden = hidden;
    updateTip();
    update(before | hoverRegion());
}

int TubesheetMap::tipTube() const
{
    if (m_hovered >= 0)
        return m_hovered;
    return m_cursorTip ? m_cursor : -1;
}

void TubesheetMap::followSelection()
{
    if (m_cursor < 0 || m_selectsAtCursor || m_tubes->isSelected(m_cursor))
        return;
    m_cursorTip = m_tubes->selectedCount() == 1;
    if (!m_cursorTip)
        return;
    m_cursor = m_tubes->selection().first();
    if (m_hovered < 0)
        Q_EMIT hovered(m_cursor);
}

void TubesheetMap::updateTip()
{
    const int tube = tipTube();
    m_tipRect = QRectF();
    if (!m_tubeTip || m_tipHidden || !m_steamGen || tube < 0 || tube >= m_scene.numTube() || m_drag != Drag::None)
        return;
    const auto &address = m_scene.tube(tube).address;
    m_tip.mark = m_scene.mark(tube);
    m_tip.selected = m_scene.isSelected(tube);
    m_tip.name = m_steamGen->tubeName(address.row, address.col, address.sec);
    m_tip.lines.clear();
    m_tip.lines << (m_tip.mark.symbol == 0 ? u"Open"_s : u"Symbol %1"_s.arg(QChar(m_tip.mark.symbol)));
    if (m_tip.selected)
        m_tip.lines.last() += u", selected"_s;
    if (m_tipText)
        m_tip.lines << m_tipText(tube);
    m_tipRect = m_tip.place(font(), posOf(tube), std::max(16.0, ringRadius() + 4), m_view.size);
}

void TubesheetMap::paintRulerMarks(QPainter &painter)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(m_rulers.font());
    for (const MapRulers::Label &label : hoverLabels()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Highlight));
        painter.drawRoundedRect(label.rect.adjusted(-4, -1, 4, 1), 3, 3);
        painter.setPen(palette().color(QPalette::HighlightedText));
        painter.drawText(label.rect, Qt::AlignCenter | Qt::TextDontClip, label.text);
    }
    painter.restore();
}

void TubesheetMap::paintOverlay(QPainter &painter)
{
    const double radius = ringRadius();
    if (m_cursor >= 0)
        paintCursor(painter, posOf(m_cursor), radius, palette());
    if (m_hovered >= 0)
        paintHoverRing(painter, posOf(m_hovered), radius);
    paintRulerMarks(painter);
    if (!m_band.isEmpty())
        paintBand(painter, m_band, palette());
    if (!m_bandCountRect.isEmpty())
        paintCount(painter, m_bandCountRect, m_bandCount, font(), palette());
    if (!m_tipRect.isEmpty())
        m_tip.paint(painter, m_tipRect, font(), palette(), m_scene.options);
    if (m_showFocus && hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

} // namespace brannock

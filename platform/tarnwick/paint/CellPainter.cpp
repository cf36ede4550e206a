#include "CellPainter.h"

#include <QPainter>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr double kLeastStretch = 0.6; ///< longer texts are condensed down to this factor, then cut

QFont withoutKerning(QFont font)
{
    font.setKerning(false);
    return font;
}

/// x of a text of that width in the room.
double startOf(const QRectF &room, double width, Qt::Alignment align)
{
    if (align & Qt::AlignRight)
        return room.right() - width;
    if (align & Qt::AlignHCenter)
        return room.center().x() - width / 2;
    return room.left();
}

} // namespace

CellPainter::CellPainter(QFont font)
    : m_font(withoutKerning(std::move(font)))
    , m_metrics(m_font)
{
    for (size_t i = 0; i < m_widths.size(); ++i)
        m_widths[i] = m_metrics.horizontalAdvance(QChar(char16_t(i)));
}

double CellPainter::width(const QString &text) const
{
    double width = 0;
    for (const QChar character : text) {
        if (character < u' ' || character >= u'\x7f')
            return m_metrics.horizontalAdvance(text);
        width += m_widths[character.unicode()];
    }
    return width;
}

bool CellPainter::paint(QPainter &painter, const QRectF &cell, const QString &text, Qt::Alignment align,
                        double margin) const
{
    if (text.isEmpty())
        return false;
    const QRectF room = cell.adjusted(margin, 0, -margin, 0);
    const double baseline = room.center().y() - m_metrics.height() / 2 + m_metrics.ascent();
    QString line = text;
    line.replace(u'\n', u' ');
    double wide = width(line);
    if (wide <= room.width()) {
        painter.drawText(QPointF(startOf(room, wide, align), baseline), line);
        return false;
    }
    const double stretch = std::max(room.width() / wide, kLeastStretch);
    const bool isCut = wide * stretch > room.width() + 1;
    if (isCut) {
        line = m_metrics.elidedText(line, Qt::ElideRight, room.width() / stretch);
        wide = width(line);
    }
    painter.save();
    painter.translate(startOf(room, wide * stretch, align), 0);
    painter.scale(stretch, 1);
    painter.drawText(QPointF(0, baseline), line);
    painter.restore();
    return isCut;
}

} // namespace tarnwick

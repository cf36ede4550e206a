// Painting of the text view.
#include "TextReport.h"

#include <tarnwick/paint/Colours.h>

#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace conversion {

QRect TextReport::lineRect(int line) const
{
    const int y = headerHeight() + (line - verticalScrollBar()->value()) * m_lineHeight;
    return {numberWidth(), y, viewport()->width() - numberWidth(), m_lineHeight};
}

// On a dark theme the light colours of fields would glare; half of the background keeps them apart.
QColor TextReport::markColour(tarnwick::ColourRef colour, bool isCurrent) const
{
    constexpr double kDarkShare = 0.55;
    constexpr double kCurrentShare = 0.3;
    const QColor base = palette().color(QPalette::Base);
    QColor ground = tarnwick::fromColourRef(colour);
    if (base.lightness() < 128)
        ground = tarnwick::mixed(ground, base, kDarkShare);
    return isCurrent ? tarnwick::mixed(ground, palette().color(QPalette::Highlight), kCurrentShare) : ground;
}

// Fills whole columns of a line and writes their characters, each in its own column. Texts of simple letters are
// written in one piece; with others a font of another width may be used, so each letter is placed.
void TextReport::paintColumns(QPainter &painter, int line, qsizetype first, qsizetype last, const QColor &ground,
                              const QColor &ink) const
{
    const int scrolled = horizontalScrollBar()->value();
    first = std::max<qsizetype>(first, scrolled);
    last = std::min<qsizetype>(last, scrolled + horizontalScrollBar()->pageStep() + 1);
    if (last < first)
        return;
    const QRect row = lineRect(line);
    const QRectF rect(xOf(first), row.top(), m_charWidth * qreal(last - first + 1), row.height());
    painter.fillRect(rect, ground);
    const QStringView text = m_text->line(line);
    if (first >= text.size())
        return;
    QString shown = text.sliced(first, std::min(last + 1, text.size()) - first).toString();
    bool isSimple = true;
    for (QChar &c : shown) {
        if (c == u'\t')
            c = u' ';
        else if (!c.isPrint())
            c = c.isSurrogate() ? c : QChar(QChar::ReplacementCharacter);
        constexpr char16_t kLastLatin = 0x24F;
        isSimple = isSimple && c.unicode() <= kLastLatin;
    }
    painter.setPen(ink);
    const qreal baseline = row.top() + 1 + QFontMetricsF(font()).ascent();
    if (isSimple) {
        painter.drawText(QPointF(rect.left(), baseline), shown);
        return;
    }
    for (qsizetype i = 0; i < shown.size(); ++i) {
        const bool isPair = shown[i].isHighSurrogate() && i + 1 < shown.size();
        painter.drawText(QPointF(xOf(first + i), baseline), shown.mid(i, isPair ? 2 : 1));
        i += isPair ? 1 : 0;
    }
}

void TextReport::paintLine(QPainter &painter, int line) const
{
    const bool isCurrent = line == m_cursor.line;
    const QColor base = palette().color(QPalette::Base);
    constexpr double kCurrentShare = 0.2;
    const QColor ground = isCurrent ? tarnwick::mixed(base, palette().color(QPalette::Highlight), kCurrentShare) : base;
    if (isCurrent)
        painter.fillRect(lineRect(line), ground);
    paintColumns(painter, line, 0, m_text->line(line).size() - 1, ground, tarnwick::inkOn(ground));
    if (m_isHighlighted) {
        const QList<FieldMark> marks = m_marks.of(line + 1, m_text->line(line));
        for (const FieldMark &mark : marks) {
            const QColor colour = markColour(mark.colour, isCurrent);
            paintColumns(painter, line, mark.first, mark.last, colour, tarnwick::inkOn(colour));
        }
    }
    paintBlock(painter, line);
    if (isCurrent) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(lineRect(line).adjusted(0, 0, -1, -1));
    }
}

void TextReport::paintBlock(QPainter &painter, int line) const
{
    const auto [top, bottom] = std::minmax(m_anchor.line, m_cursor.line);
    if (line < top || line > bottom || m_anchor == m_cursor)
        return;
    const auto [left, right] = columns();
    const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    paintColumns(painter, line, hasBlock() ? left : 0,
                 hasBlock() ? right : std::max<qsizetype>(0, m_text->line(line).size() - 1),
                 palette().color(group, QPalette::Highlight), palette().color(group, QPalette::HighlightedText));
}

void TextReport::paintCursor(QPainter &painter) const
{
    if (!hasFocus() || m_cursor.line < 0)
        return;
    const QRect row = lineRect(m_cursor.line);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawRect(QRectF(xOf(m_cursor.column), row.top(), m_charWidth - 1, row.height() - 1));
}

void TextReport::paintNumber(QPainter &painter, int line) const
{
    const QRect rect(0, lineRect(line).top(), numberWidth(), m_lineHeight);
    const bool isCurrent = line == m_cursor.line;
    QColor ground = palette().color(isCurrent ? QPalette::Highlight : QPalette::Button);
    QColor ink = palette().color(isCurrent ? QPalette::HighlightedText : QPalette::ButtonText);
    const bool hasNote = m_notes.contains(line + 1);
    painter.fillRect(rect, ground);
    painter.setPen(ink);
    const int right = qRound(m_charWidth / 2);
    painter.drawText(rect.adjusted(0, 0, -right, 0), Qt::AlignRight | Qt::AlignVCenter,
                     (hasNote ? u"!"_s : QString()) + QString::number(line + 1));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect.topRight(), rect.bottomRight());
}

// The fields' keywords in their colours, and below a ruler of the columns.
void TextReport::paintTitles(QPainter &painter) const
{
    const QRect rect(0, 0, viewport()->width(), headerHeight());
    painter.fillRect(rect, palette().color(QPalette::Button));
    painter.setPen(palette().color(QPalette::ButtonText));
    const int first = horizontalScrollBar()->value();
    const int last = first + horizontalScrollBar()->pageStep() + 1;
    const int tick = m_lineHeight / 4;
    for (int column = first; column <= last; ++column) {
        const qreal x = xOf(column) + m_charWidth / 2;
        const bool isTen = column % 10 == 0;
        painter.drawLine(QPointF(x, rect.bottom() - (column % 5 == 0 ? tick : tick / 2)), QPointF(x, rect.bottom()));
        if (isTen) {
            const QRectF room(x - 4 * m_charWidth, m_lineHeight - 2, 8 * m_charWidth, m_lineHeight - tick);
            painter.drawText(room, Qt::AlignCenter, QString::number(column));
        }
    }
    for (const FieldMark &mark : m_isHighlighted ? m_marks.columns() : QList<FieldMark>()) {
        const QRectF room(xOf(mark.first), 0, m_charWidth * qreal(mark.last - mark.first + 1), m_lineHeight - 2);
        if (room.right() < numberWidth() || room.left() > rect.right())
            continue;
        const QColor colour = markColour(mark.colour, false);
        painter.fillRect(room.adjusted(0, 0, -1, 0), colour);
        painter.setPen(tarnwick::inkOn(colour));
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, mark.keyword);
    }
    const QRect corner(0, 0, numberWidth(), headerHeight());
    painter.fillRect(corner, palette().color(QPalette::Button));
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(corner.adjusted(0, 0, -qRound(m_charWidth / 2), 0), Qt::AlignRight | Qt::AlignVCenter, u"LINE"_s);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
}

void TextReport::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    painter.setFont(font());
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    const int first = verticalScrollBar()->value();
    const int last = std::min(first + pageLines(), lineCount() - 1);
    for (int line = first; line <= last; ++line)
        paintLine(painter, line);
    if (m_cursor.line >= first && m_cursor.line <= last)
        paintCursor(painter);
    for (int line = first; line <= last; ++line)
        paintNumber(painter, line);
    paintTitles(painter);
}

} // namespace conversion

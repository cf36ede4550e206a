#include "LegendTable.h"

#include "TubeArt.h"

#include <cmath>
#include <QFontMetricsF>
#include <tarnwick/Format.h>

namespace brannock {

using namespace Qt::StringLiterals;

static constexpr qsizetype kNoLimit = 1 << 20;

static QString counted(int count)
{
    return tarnwick::format(u"%D", count);
}

LegendTable::LegendTable(const QList<LegendRow> &rows, int pixelSize)
    : m_rows(rows)
    , m_font(u"Courier New"_s)
{
    m_font.setStyleHint(QFont::Monospace);
    m_font.setPixelSize(std::max(1, pixelSize));
    const QFontMetricsF metrics(m_font);
    m_char = metrics.horizontalAdvance(u'0');
    m_row = std::ceil(metrics.height() * 1.25);
    m_typeChars = 4;
    m_numberChars = 5;
    m_longest = 11;
    for (const LegendRow &row : rows) {
        m_typeChars = std::max(m_typeChars, int(row.type.size()));
        m_numberChars = std::max({m_numberChars, int(counted(row.tubes).size()), int(counted(row.hits).size())});
        m_longest = std::max(m_longest, int(descriptionOf(row, kNoLimit).size()));
    }
}

double LegendTable::widthWith(int descriptionChars) const
{
    return 2 * m_row + m_char * (m_typeChars + descriptionChars + 2 * m_numberChars + 4);
}

LegendTable::Columns LegendTable::columns(double left, double width) const
{
    Columns columns{};
    columns.symbol = left + m_row * 0.2;
    columns.type = columns.symbol + m_row * 1.4;
    columns.description = columns.type + m_char * (m_typeChars + 1);
    columns.end = left + width - m_row * 0.4;
    columns.hits = columns.end - m_char * m_numberChars;
    columns.tubes = columns.hits - m_char * (m_numberChars + 1);
    return columns;
}

QString LegendTable::descriptionOf(const LegendRow &row, qsizetype room)
{
    const QString note = row.shown ? QString() : u" (hidden)"_s;
    const QString line = row.description.simplified();
    if (line.size() + note.size() <= room)
        return line + note;
    const qsizetype left = room - note.size() - 1;
    return left < 0 ? QString() : line.left(left) + u'…' + note;
}

qsizetype LegendTable::descriptionRoom(const Columns &columns) const
{
    return qsizetype((columns.tubes - columns.description) / m_char + 1e-6) - 1;
}

int LegendTable::linesWithin(double height) const
{
    return int((height - m_row * 0.4) / m_row + 1e-6) - 1;
}

int LegendTable::rowsWithin(double height) const
{
    const int lines = linesWithin(height);
    if (lines >= m_rows.size())
        return int(m_rows.size());
    return std::max(0, lines - 1); // one line shows the number of the others
}

QStringList LegendTable::texts(double width, double height) const
{
    QStringList lines;
    const Columns at = columns(0, width);
    const int shown = rowsWithin(height);
    for (int i = 0; i < shown; ++i) {
        const LegendRow &row = m_rows[i];
        lines << row.type + u'|' + descriptionOf(row, descriptionRoom(at)) + u'|' + counted(row.tubes) + u'|' +
                     counted(row.hits);
    }
    if (shown < m_rows.size())
        lines << u"... and %1 more"_s.arg(m_rows.size() - shown);
    return lines;
}

void LegendTable::paintHeading(QPainter &painter, const Columns &columns, double top) const
{
    const auto text = [&](double left, double right, Qt::Alignment align, const QString &title) {
        painter.drawText(QRectF(left, top, right - left, m_row), int(align | Qt::AlignVCenter) | Qt::TextDontClip,
                         title);
    };
    QFont font = m_font;
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::black);
    text(columns.type, columns.description, Qt::AlignLeft, u"TYPE"_s);
    text(columns.description, columns.tubes, Qt::AlignLeft, u"DESCRIPTION"_s);
    text(columns.tubes, columns.tubes + m_char * m_numberChars, Qt::AlignRight, u"TUBES"_s);
    text(columns.hits, columns.end, Qt::AlignRight, u"HITS"_s);
    painter.setPen(QPen(QColor(0x60, 0x60, 0x60), std::max(1.0, m_row * 0.04)));
    painter.drawLine(QPointF(columns.symbol, top + m_row), QPointF(columns.end, top + m_row));
    painter.setFont(m_font);
}

void LegendTable::paintRow(QPainter &painter, const Columns &columns, double top, const LegendRow &row,
                           const MapOptions &options) const
{
    const TubeArt art = TubeArt::forVectors(options, m_row * 0.9 / 0.86);
    art.paintTube(painter, QPointF(columns.symbol + m_row * 0.55, top + m_row / 2), row.mark, false);
    QFont font = m_font;
    font.setStrikeOut(!row.shown);
    painter.setFont(font);
    painter.setPen(row.shown ? QColor(Qt::black) : QColor(0x70, 0x70, 0x70));
    const auto text = [&](double left, double right, Qt::Alignment align, const QString &content) {
        painter.drawText(QRectF(left, top, right - left, m_row), int(align | Qt::AlignVCenter) | Qt::TextDontClip,
                         content);
    };
    text(columns.type, columns.description, Qt::AlignLeft, row.type);
    text(columns.description, columns.tubes, Qt::AlignLeft, descriptionOf(row, descriptionRoom(columns)));
    text(columns.tubes, columns.tubes + m_char * m_numberChars, Qt::AlignRight, counted(row.tubes));
    text(columns.hits, columns.end, Qt::AlignRight, counted(row.hits));
}

void LegendTable::paint(QPainter &painter, const QRectF &rect, const MapOptions &options) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const Columns at = columns(rect.left(), rect.width());
    double top = rect.top() + m_row * 0.1;
    paintHeading(painter, at, top);
    top += m_row * 1.1;
    const int shown = rowsWithin(rect.height());
    for (int i = 0; i < shown; ++i, top += m_row)
        paintRow(painter, at, top, m_rows[i], options);
    if (shown < m_rows.size()) {
        painter.setPen(Qt::black);
        painter.drawText(QRectF(at.type, top, at.end - at.type, m_row), Qt::AlignLeft | Qt::AlignVCenter,
                         u"... and %1 more"_s.arg(m_rows.size() - shown));
    }
    painter.restore();
}

} // namespace brannock

#include "ColumnPrinter.h"

#include "Console.h"

namespace cli {

using namespace Qt::StringLiterals;

ColumnPrinter::ColumnPrinter(const QStringList &titles, const QList<bool> &rightAligned)
    : m_rightAligned(rightAligned)
    , m_held{titles}
{
    m_rightAligned.resize(titles.size());
}

void ColumnPrinter::row(const QStringList &cells)
{
    ++m_rows;
    if (m_rows > kRowsHeld)
        printCells(cells);
    else
        m_held.append(cells);
    if (m_rows == kRowsHeld)
        release();
}

void ColumnPrinter::end()
{
    release();
}

void ColumnPrinter::release()
{
    if (m_held.isEmpty())
        return;
    m_widths = QList<qsizetype>(m_rightAligned.size(), 0);
    for (const QStringList &cells : std::as_const(m_held))
        for (qsizetype i = 0; i < cells.size(); ++i)
            m_widths[i] = std::max(m_widths[i], cells[i].size());
    printCells(m_held.first());
    QStringList rules;
    for (const qsizetype width : std::as_const(m_widths))
        rules.append(QString(width, u'-'));
    print(rules.join(u"  "_s) + u'\n');
    for (qsizetype i = 1; i < m_held.size(); ++i)
        printCells(m_held[i]);
    m_held.clear();
}

void ColumnPrinter::printCells(const QStringList &cells) const
{
    QString line;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        QString cell = cells[i];
        // Line ends and tabs inside a text would break the table.
        cell.replace(u'\n', u' ').replace(u'\t', u' ').remove(u'\r');
        const bool last = i + 1 == cells.size();
        line += m_rightAligned[i] ? cell.rightJustified(m_widths[i]) : last ? cell : cell.leftJustified(m_widths[i]);
        if (!last)
            line += u"  "_s;
    }
    while (line.endsWith(u' '))
        line.chop(1);
    print(line + u'\n');
}

} // namespace cli

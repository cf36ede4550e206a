#include "ListGrids.h"

using namespace Qt::StringLiterals;
using tarnwick::ColumnAlign;

namespace plans {

static constexpr int kNumberWidth = 8;

tarnwick::GridColumn ListGrid::column(int column) const
{
    if (isTube(column))
        return m_tube.column(column - 1);
    tarnwick::GridColumn result{.title = column == 0 ? u"ENTRY"_s : u"SYMBOL"_s};
    result.width = kNumberWidth;
    result.align = column == 0 ? ColumnAlign::Right : ColumnAlign::Center;
    return result;
}

QString ListGrid::text(int row, int column) const
{
    if (column == 0)
        return QString::number(entry(row).entryNum);
    return isTube(column) ? m_tube.text(entry(row).address(), column - 1) : entry(row).mark.symbol.text();
}

QVariant ListGrid::value(int row, int column) const
{
    if (column == 0)
        return entry(row).entryNum;
    if (isTube(column))
        return TubeColumns::number(entry(row).address(), m_tube.axis(column - 1));
    return text(row, column);
}

QString ListGrid::whyNotEditable(int, int column) const
{
    return column <= m_tube.count() ? QString() : u"The symbol is that of the tube when it was added."_s;
}

bool ListGrid::setText(int row, int column, const QString &text)
{
    const bool isSet =
        column == 0 ? m_editor.setNumber(row, text) : m_editor.setLabel(row, m_tube.axis(column - 1), text);
    tell();
    return isSet;
}

bool ListGrid::deleteRow(int row)
{
    m_editor.removeEntries({row});
    tell();
    return true;
}

tarnwick::GridColumn ParsedLineGrid::column(int column) const
{
    constexpr int kTextWidth = 60;
    static constexpr const char16_t *kTitles[] = {u"LINE", u"ENTRY", u"FILE TEXT"};
    tarnwick::GridColumn result{.title = QString::fromUtf16(kTitles[column])};
    result.width = column == 2 ? kTextWidth : kNumberWidth;
    result.align = column == 2 ? ColumnAlign::Left : ColumnAlign::Right;
    return result;
}

QString ParsedLineGrid::text(int row, int column) const
{
    const QVariant cell = value(row, column);
    return cell.isValid() ? cell.toString() : QString();
}

QVariant ParsedLineGrid::value(int row, int column) const
{
    if (column == 0)
        return line(row).line;
    if (column == 1)
        return line(row).tube >= 0 ? QVariant(line(row).entryNum) : QVariant();
    return line(row).text.toString();
}

tarnwick::RowColours ParsedLineGrid::colours(int row) const
{
    constexpr tarnwick::ColourRef kRed(0x0000C0);
    tarnwick::RowColours colours;
    if (line(row).isError())
        colours.foreground = kRed;
    return colours;
}

QString ParsedLineGrid::tip(int row, int) const
{
    if (!line(row).isError())
        return {};
    return line(row).isCut ? u"The line is too long, and names no tube of the component."_s
                           : u"The line names no tube of the component."_s;
}

} // namespace plans

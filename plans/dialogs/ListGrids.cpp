#include "ListGrids.h"

using namespace Qt::StringLiterals;
using tarnwick::ColumnAlign;

namespace plans {

static constexpr int kNumberWidth = 8;

tarnwick::GridColumn ListGrid::furtherColumn(int) const
{
    tarnwick::GridColumn column{.title = u"SYMBOL"_s};
    column.width = kNumberWidth;
    column.align = ColumnAlign::Center;
    return column;
}

QString ListGrid::furtherText(int row, int) const
{
    return m_editor.list().entries[row].mark.symbol.text();
}

QString ListGrid::whyNotEditable(int, int column) const
{
    return column == kEntry || isTube(column) ? QString() : u"The symbol is that of the tube when it was added."_s;
}

bool ListGrid::setText(int row, int column, const QString &text)
{
    if (column != kEntry)
        return TubeGrid::setText(row, column, text);
    const bool isSet = m_editor.setNumber(row, text);
    tell();
    return isSet;
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

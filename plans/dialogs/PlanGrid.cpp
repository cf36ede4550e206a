#include "PlanGrid.h"

#include <plans/storage/TubeListFile.h>

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace plans {

using ellery::Axis;
using ellery::TubeAddress;

TubeColumns::TubeColumns(const ellery::SteamGen &component)
    : m_component(component)
{
    if (component.hasSections())
        m_axes.append(Axis::Sec);
    m_axes += {Axis::Row, Axis::Col};
}

tarnwick::GridColumn TubeColumns::column(int index) const
{
    constexpr int kWidth = 8;
    tarnwick::GridColumn column{.title = m_component.axisNames[int(m_axes[index])]};
    column.width = kWidth;
    column.align = tarnwick::ColumnAlign::Right;
    return column;
}

int TubeColumns::number(const TubeAddress &address, Axis axis)
{
    return axis == Axis::Sec ? address.sec : axis == Axis::Row ? address.row : address.col;
}

QString TubeColumns::text(const TubeAddress &address, int index) const
{
    return axisLabel(m_component, m_axes[index], number(address, m_axes[index]));
}

tarnwick::RowColours TubeColumns::colours(const TubeAddress &address) const
{
    constexpr tarnwick::ColourRef kRed(0x0000C0);
    tarnwick::RowColours colours;
    if (!exists(address))
        colours.foreground = kRed;
    return colours;
}

QString TubeColumns::tip(const TubeAddress &address) const
{
    return exists(address) ? QString() : u"This tube does not exist in the component."_s;
}

tarnwick::GridColumn PlanGrid::column(int column) const
{
    constexpr int kEntryWidth = 8;
    constexpr int kStateWidth = 12;
    if (isTube(column))
        return m_tube.column(column - 1);
    tarnwick::GridColumn result{.title = column == 0            ? u"ENTRY"_s
                                         : column == acquired() ? u"ACQUIRED"_s
                                                                : u"ANALYZED"_s};
    result.width = column == 0 ? kEntryWidth : kStateWidth;
    result.align = column == 0 ? tarnwick::ColumnAlign::Right : tarnwick::ColumnAlign::Left;
    return result;
}

QString PlanGrid::text(int row, int column) const
{
    if (column == 0)
        return QString::number(entry(row).entryNum + 1);
    if (isTube(column))
        return m_tube.text(entry(row).address(), column - 1);
    if (column == acquired())
        return entry(row).acquired >= 1 ? u"ACQUIRED"_s : QString();
    return entry(row).analyzed ? u"ANALYZED"_s : QString();
}

QVariant PlanGrid::value(int row, int column) const
{
    if (column == 0)
        return entry(row).entryNum + 1;
    if (isTube(column))
        return TubeColumns::number(entry(row).address(), m_tube.axis(column - 1));
    return text(row, column);
}

QString PlanGrid::whyNotEditable(int, int column) const
{
    return isTube(column) ? QString() : u"Only the address of the tube can be typed."_s;
}

bool PlanGrid::setText(int row, int column, const QString &text)
{
    const bool isSet = m_editor.setLabel(row, m_tube.axis(column - 1), text);
    tell();
    return isSet;
}

bool PlanGrid::deleteRow(int row)
{
    m_editor.removeEntries({row});
    tell();
    return true;
}

void EditedGrid::asOneChange(const std::function<void()> &work)
{
    m_isInChange = true;
    const auto end = qScopeGuard([this] {
        m_isInChange = false;
        tell();
    });
    work();
}

void EditedGrid::tell()
{
    if (changed && !m_isInChange)
        changed();
}

} // namespace plans

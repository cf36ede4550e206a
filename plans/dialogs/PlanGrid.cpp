#include "PlanGrid.h"

using namespace Qt::StringLiterals;

namespace plans {

tarnwick::GridColumn PlanGrid::furtherColumn(int index) const
{
    constexpr int kStateWidth = 12;
    tarnwick::GridColumn column{.title = index == 0 ? u"ACQUIRED"_s : u"ANALYZED"_s};
    column.width = kStateWidth;
    column.align = tarnwick::ColumnAlign::Left;
    return column;
}

QString PlanGrid::furtherText(int row, int index) const
{
    const bool isDone = index == 0 ? entry(row).acquired >= 1 : entry(row).analyzed != 0;
    return isDone ? furtherColumn(index).title : QString();
}

QString PlanGrid::whyNotEditable(int, int column) const
{
    return isTube(column) ? QString() : u"Only the address of the tube can be typed."_s;
}

} // namespace plans

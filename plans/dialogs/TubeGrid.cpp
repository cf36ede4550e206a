#include "TubeGrid.h"

#include <plans/storage/TubeListFile.h>

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace plans {

using ellery::Axis;
using ellery::TubeAddress;

namespace {

int numberOf(const TubeAddress &address, Axis axis)
{
    return axis == Axis::Sec ? address.sec : axis == Axis::Row ? address.row : address.col;
}

} // namespace

TubeGrid::TubeGrid(EntriesEditor &editor)
    : m_editor(editor)
{
    if (editor.component().hasSections())
        m_axes.append(Axis::Sec);
    m_axes += {Axis::Row, Axis::Col};
}

tarnwick::GridColumn TubeGrid::column(int column) const
{
    if (column >= firstFurther())
        return furtherColumn(column - firstFurther());
    constexpr int kWidth = 8;
    tarnwick::GridColumn result{.title =
                                    column == kEntry ? u"ENTRY"_s : m_editor.component().axisNames[int(axis(column))]};
    result.width = kWidth;
    result.align = tarnwick::ColumnAlign::Right;
    return result;
}

QString TubeGrid::text(int row, int column) const
{
    if (column == kEntry)
        return QString::number(shownNumber(row));
    if (!isTube(column))
        return furtherText(row, column - firstFurther());
    // "?12" if the component has no such label
    return axisLabel(m_editor.component(), axis(column), numberOf(m_editor.address(row), axis(column)));
}

QVariant TubeGrid::value(int row, int column) const
{
    if (column == kEntry)
        return shownNumber(row);
    return isTube(column) ? QVariant(numberOf(m_editor.address(row), axis(column))) : QVariant(text(row, column));
}

tarnwick::RowColours TubeGrid::colours(int row) const
{
    constexpr tarnwick::ColourRef kRed(0x0000C0);
    tarnwick::RowColours colours;
    if (!exists(row))
        colours.foreground = kRed;
    return colours;
}

QString TubeGrid::tip(int row, int) const
{
    return exists(row) ? QString() : u"This tube does not exist in the component."_s;
}

bool TubeGrid::setText(int row, int column, const QString &text)
{
    const bool isSet = m_editor.setLabel(row, axis(column), text);
    tell();
    return isSet;
}

bool TubeGrid::deleteRow(int row)
{
    m_editor.removeEntries({row});
    tell();
    return true;
}

void TubeGrid::asOneChange(const std::function<void()> &work)
{
    m_isInChange = true;
    const auto end = qScopeGuard([this] {
        m_isInChange = false;
        tell();
    });
    work();
}

void TubeGrid::tell()
{
    if (changed && !m_isInChange)
        changed();
}

} // namespace plans

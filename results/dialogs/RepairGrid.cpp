#include "RepairGrid.h"

#include <results/repairs/Messages.h>

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace results {

RepairGrid::RepairGrid(RepairList &list, const ellery::SteamGen &steamGen)
    : m_list(list)
    , m_steamGen(steamGen)
    , m_titles(RepairList::columnTitles(steamGen))
    , m_numbers(steamGen.hasSections() ? 3 : 2)
{
    m_titles[0] = u"SEL"_s;
}

tarnwick::GridColumn RepairGrid::column(int column) const
{
    constexpr int kTypeWidth = 18;
    constexpr int kDateWidth = 16;
    tarnwick::GridColumn result{.title = m_titles[column]};
    if (column == kSelected) {
        result.width = 4;
        result.align = tarnwick::ColumnAlign::Center;
        result.editor = tarnwick::GridColumn::Editor::Check;
    } else if (column <= m_numbers) {
        result.width = 6;
        result.align = tarnwick::ColumnAlign::Right;
    } else if (column >= columnCount() - 2) {
        result.width = kDateWidth;
    } else if (column > m_numbers + 1) {
        result.width = kTypeWidth;
    }
    return result;
}

QString RepairGrid::text(int row, int column) const
{
    if (column == kSelected)
        return m_list.isSelected(placeOf(row)) ? u"X"_s : QString();
    return m_list.cells(row)[column];
}

QVariant RepairGrid::value(int row, int column) const
{
    const Repair &repair = m_list.repair(placeOf(row));
    if (column == kSelected)
        return m_list.isSelected(placeOf(row));
    if (column <= m_numbers) {
        const qint16 numbers[] = {repair.sec, repair.row, repair.col};
        return numbers[column - 1 + 3 - m_numbers];
    }
    if (column < columnCount() - 2)
        return text(row, column);
    const tarnwick::JDateTime &date = column == columnCount() - 1 ? repair.dateCompleted : repair.dateScheduled;
    return date.isNull() ? QVariant() : QVariant(QDateTime::fromSecsSinceEpoch(date.seconds()));
}

bool RepairGrid::hasTube(int row) const
{
    return m_steamGen.findTube(m_list.repair(placeOf(row)).address()) >= 0;
}

tarnwick::RowColours RepairGrid::colours(int row) const
{
    constexpr tarnwick::ColourRef kSelectedRow(0xA0FFFF); // light yellow
    constexpr tarnwick::ColourRef kWithoutTube(0x0000C0); // red
    tarnwick::RowColours colours;
    if (m_list.isSelected(placeOf(row)))
        colours.background = kSelectedRow;
    if (!hasTube(row))
        colours.foreground = kWithoutTube;
    return colours;
}

QString RepairGrid::tip(int row, int column) const
{
    if (!hasTube(row))
        return tarnwick::format(messages::kTubeMissing.text, m_list.tubeName(m_list.repair(placeOf(row))));
    return column == kSelected ? QString() : m_list.repair(placeOf(row)).comment;
}

QString RepairGrid::whyNotEditable(int, int column) const
{
    return column == kSelected ? QString() : u"Press Return to edit the attributes of the repair."_s;
}

bool RepairGrid::setText(int row, int, const QString &text)
{
    m_list.setSelected(placeOf(row), text == u"1");
    if (selectionChanged)
        selectionChanged();
    return true;
}

} // namespace results

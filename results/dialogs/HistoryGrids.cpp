#include "HistoryGrids.h"

#include <algorithm>
#include <cmath>
#include <results/history/HistoryColumns.h>
#include <results/history/Messages.h>

using namespace Qt::StringLiterals;
using tarnwick::ColumnAlign;
using tarnwick::GridColumn;

namespace results {

namespace {

const QString kMark = u"X"_s;

} // namespace

HistoryGrid::HistoryGrid(HistoryList &list, const ellery::SteamGen &steamGen, tarnwick::UserPrompts &prompts)
    : m_list(list)
    , m_steamGen(steamGen)
    , m_prompts(prompts)
    , m_numbers(steamGen.hasSections() ? 3 : 2)
{
}

void HistoryGrid::refresh()
{
    m_places.clear();
    for (int place = 0; m_keptOnly && place < m_list.count(); ++place)
        if (m_list.isKept(place))
            m_places.push_back(quint32(place));
}

int HistoryGrid::rowOf(int place) const
{
    const int row =
        m_keptOnly ? int(std::lower_bound(m_places.begin(), m_places.end(), quint32(place)) - m_places.begin()) : place;
    return std::min(row, rowCount() - 1);
}

int HistoryGrid::columnCount() const
{
    return m_numbers + int(historyColumns().size());
}

const HistoryColumn &HistoryGrid::columnAt(int column) const
{
    return historyColumns()[size_t(column - m_numbers)];
}

ellery::Axis HistoryGrid::axisAt(int column) const
{
    using ellery::Axis;
    constexpr Axis axes[] = {Axis::Sec, Axis::Row, Axis::Col};
    return axes[column + int(std::size(axes)) - m_numbers];
}

int HistoryGrid::number(int row, int column) const
{
    const HistoryRow &entry = m_list.rowAt(placeOf(row));
    const ellery::Axis axis = axisAt(column);
    return axis == ellery::Axis::Sec ? entry.sec : axis == ellery::Axis::Row ? entry.row : entry.col;
}

GridColumn HistoryGrid::column(int column) const
{
    constexpr int kNumberWidth = 6;
    if (column < m_numbers)
        return {.title = m_steamGen.axisNames[int(axisAt(column))], .width = kNumberWidth, .align = ColumnAlign::Right};
    const HistoryColumn &info = columnAt(column);
    GridColumn result{.title = QString::fromUtf16(info.title), .width = info.width, .align = info.align};
    if (!info.set)
        result.editor = GridColumn::Editor::Check;
    if (result.title == u"LEG") {
        result.editor = GridColumn::Editor::Choice;
        result.choices = historyLegs();
    }
    return result;
}

QString HistoryGrid::text(int row, int column) const
{
    if (column < m_numbers)
        return m_steamGen.tubeLabel(axisAt(column), number(row, column));
    const int place = placeOf(row);
    const HistoryColumn &info = columnAt(column);
    return info.text ? info.text(m_list.entryAt(place)) : m_list.isKept(place) ? kMark : QString();
}

QVariant HistoryGrid::value(int row, int column) const
{
    if (column < m_numbers)
        return number(row, column);
    const HistoryColumn &info = columnAt(column);
    return info.value ? info.value(m_list.entryAt(placeOf(row))) : QVariant(text(row, column));
}

QString HistoryGrid::editText(int row, int column) const
{
    const HistoryColumn *info = column < m_numbers ? nullptr : &columnAt(column);
    return info && info->editText ? info->editText(m_list.entryAt(placeOf(row))) : text(row, column);
}

tarnwick::RowColours HistoryGrid::colours(int row) const
{
    constexpr tarnwick::ColourRef kNotKept(0x808080);
    constexpr tarnwick::ColourRef kEdited(0xA0FFFF); // light yellow
    tarnwick::RowColours colours;
    if (!m_list.isKept(placeOf(row)))
        colours.foreground = kNotKept;
    if (m_list.isEdited(placeOf(row)))
        colours.background = kEdited;
    return colours;
}

QString HistoryGrid::tip(int row, int) const
{
    QStringList reasons;
    if (!m_list.isKept(placeOf(row)))
        reasons.append(u"Not kept: it is not written into the history."_s);
    if (m_list.isEdited(placeOf(row)))
        reasons.append(u"Edited: it keeps its mark when the filter changes."_s);
    return reasons.join(u'\n');
}

QString HistoryGrid::whyNotEditable(int row, int column) const
{
    if (column < m_numbers)
        return u"The tube of an entry cannot be changed."_s;
    return columnAt(column).set && !m_list.isKept(placeOf(row)) ? u"Only entries that are kept can be edited."_s
                                                                : QString();
}

bool HistoryGrid::setText(int row, int column, const QString &text)
{
    const int place = placeOf(row);
    const HistoryColumn &info = columnAt(column);
    if (!info.set) {
        m_list.setKept(place, text == u"1");
    } else if (text == editText(row, column)) {
        return true;
    } else {
        brannock::HistoryEntry entry = m_list.entryAt(place);
        if (const QString reason = info.set(entry, text); !reason.isEmpty()) {
            m_prompts.showError(tarnwick::kErrorSeverity, 0, reason);
            return false;
        }
        m_list.edit(place, entry);
    }
    if (changed)
        changed();
    return true;
}

GridColumn OutageGrid::column(int column) const
{
    constexpr int kNameWidth = 12;
    if (column == 0)
        return {.title = u"OUTAGE"_s, .width = kNameWidth};
    return {.title = u"KEEP"_s, .width = 5, .align = ColumnAlign::Center, .editor = GridColumn::Editor::Check};
}

QString OutageGrid::text(int row, int column) const
{
    const OutageChoice &choice = m_list.choices().outages[row];
    return column == 0 ? choice.outage : choice.keep ? kMark : QString();
}

QString OutageGrid::whyNotEditable(int, int column) const
{
    return column == 0 ? u"The outages are those of the database."_s : QString();
}

bool OutageGrid::setText(int row, int, const QString &text)
{
    m_list.choices().outages[row].keep = text == u"1";
    if (changed)
        changed();
    return true;
}

GridColumn DefectGrid::column(int column) const
{
    switch (column) {
    case Code:
        return {.title = u"CODE"_s, .width = 6};
    case Count:
        return {.title = u"COUNT"_s, .width = 8, .align = ColumnAlign::Right};
    case Keep:
        return {.title = u"KEEP"_s, .width = 5, .align = ColumnAlign::Center, .editor = GridColumn::Editor::Check};
    default:
        return {.title = column == Volts ? u"VOLTS"_s : u"PCNT"_s, .width = 8, .align = ColumnAlign::Right};
    }
}

QString DefectGrid::text(int row, int column) const
{
    const DefectChoice &choice = m_list.choices().defects[row];
    switch (column) {
    case Code:
        return choice.code;
    case Count:
        return QString::number(choice.count);
    case Volts:
        return choice.volts < 0 ? QString() : tarnwick::format(u">= %.2f", choice.volts);
    case Percent:
        return choice.percent < 0 ? QString() : tarnwick::format(u">= %d%%", choice.percent);
    default:
        return choice.keep ? kMark : QString();
    }
}

QVariant DefectGrid::value(int row, int column) const
{
    const DefectChoice &choice = m_list.choices().defects[row];
    if (column == Count)
        return choice.count;
    return column == Volts && choice.volts >= 0       ? QVariant(choice.volts)
           : column == Percent && choice.percent >= 0 ? QVariant(choice.percent)
                                                      : QVariant(text(row, column));
}

QString DefectGrid::editText(int row, int column) const
{
    const DefectChoice &choice = m_list.choices().defects[row];
    if (column == Volts)
        return choice.volts < 0 ? QString() : QString::number(choice.volts);
    return choice.percent < 0 ? QString() : QString::number(choice.percent);
}

QString DefectGrid::whyNotEditable(int, int column) const
{
    return column == Code || column == Count ? u"The codes and their counts are those of the database."_s : QString();
}

bool DefectGrid::setText(int row, int column, const QString &text)
{
    DefectChoice choice = m_list.choices().defects[row];
    if (column == Keep) {
        choice.keep = text == u"1";
    } else {
        QString typed = text.trimmed();
        if (typed.startsWith(u">="))
            typed = typed.sliced(2).trimmed();
        if (typed.endsWith(u'%'))
            typed.chop(1);
        bool isNumber = true;
        const double number = typed.isEmpty() ? DefectChoice::kNoThreshold : typed.toDouble(&isNumber);
        constexpr double kMost = 1e6;
        if (!isNumber || !(std::abs(number) <= kMost) || (column == Percent && number != std::floor(number))) {
            m_prompts.error(messages::kNotAThreshold, text);
            return false;
        }
        // Any number below 0 means the same.
        const double threshold = number < 0 ? DefectChoice::kNoThreshold : number;
        if (column == Volts)
            choice.volts = threshold;
        else
            choice.percent = qint32(threshold);
    }
    if (choice == m_list.choices().defects[row])
        return true;
    m_list.choices().defects[row] = choice;
    if (changed)
        changed();
    return true;
}

} // namespace results

#include "MapEdit.h"

#include <algorithm>

namespace map {

ellery::Symbol nextSymbol(int count, const plans::MapFill &fill, bool autoSymbol)
{
    return autoSymbol && count < MapEdit::kAutoSymbols ? ellery::Symbol(char16_t(u'A' + count)) : fill.mark.symbol;
}

int MapEdit::addEntry(std::unique_ptr<plans::MapFill> fill, bool autoSymbol)
{
    fill->mark.symbol = nextSymbol(count(), *fill, autoSymbol);
    m_state.entries.push_back(std::move(fill));
    return count() - 1;
}

void MapEdit::replaceEntry(int place, std::unique_ptr<plans::MapFill> fill)
{
    m_state.entries[size_t(place)] = std::move(fill);
}

void MapEdit::removeEntry(int place)
{
    m_state.entries.erase(m_state.entries.begin() + place);
}

void MapEdit::removeAll()
{
    m_state.entries.clear();
}

int MapEdit::moveEntry(int from, int to)
{
    to = std::clamp(to, 0, count() - 1);
    const auto begin = m_state.entries.begin();
    if (from < to)
        std::rotate(begin + from, begin + from + 1, begin + to + 1);
    else
        std::rotate(begin + to, begin + from, begin + from + 1);
    return to;
}

template <typename Change>
void MapEdit::changeEntry(int place, Change change)
{
    auto copy = entry(place).clone();
    change(*copy);
    replaceEntry(place, std::move(copy));
}

void MapEdit::setMark(int place, const ellery::TubeMark &mark)
{
    changeEntry(place, [&mark](plans::MapFill &fill) { fill.mark = mark; });
}

void MapEdit::setShown(int place, bool shown)
{
    if (entry(place).shown != shown)
        changeEntry(place, [shown](plans::MapFill &fill) { fill.shown = shown; });
}

void MapEdit::setLabel(int place, const QString &label)
{
    changeEntry(place, [&label](plans::MapFill &fill) { fill.label = label; });
}

void MapEdit::setAllSections(int place, bool allSections)
{
    changeEntry(place, [allSections](plans::MapFill &fill) { fill.allSections = allSections; });
}

void MapEdit::setSelection(const QList<qint32> &tubes)
{
    m_state.selection = tubes;
    std::sort(m_state.selection.begin(), m_state.selection.end());
    m_state.selection.erase(std::unique(m_state.selection.begin(), m_state.selection.end()), m_state.selection.end());
}

void MapEdit::setOrientation(int x, int y)
{
    m_state.xOrientation = x;
    m_state.yOrientation = y;
}

} // namespace map

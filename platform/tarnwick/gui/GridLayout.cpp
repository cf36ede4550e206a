#include "GridLayout.h"

#include <algorithm>

namespace tarnwick {

void GridLayout::setColumns(const QList<int> &widths)
{
    m_widths = widths;
    update();
}

void GridLayout::setFrozen(int columns)
{
    m_wantedFrozen = std::max(columns, 0);
    update();
}

void GridLayout::setRoom(int pixels)
{
    m_room = pixels;
    update();
}

void GridLayout::setWidth(int column, int width)
{
    m_widths[column] = width;
    update();
}

void GridLayout::update()
{
    m_starts.resize(m_widths.size() + 1);
    m_starts[0] = 0;
    for (qsizetype i = 0; i < m_widths.size(); ++i)
        m_starts[i + 1] = m_starts[i] + m_widths[i];
    const int wanted = std::min(m_wantedFrozen, count());
    m_frozen = 3 * (m_entry + m_starts[wanted]) <= 2 * m_room || wanted == count() ? wanted : 0;
}

int GridLayout::x(int column) const
{
    return m_entry + m_starts[column] - (isFrozen(column) ? 0 : m_scroll);
}

int GridLayout::fixedWidth() const
{
    return m_entry + (m_starts.isEmpty() ? 0 : m_starts[m_frozen]);
}

int GridLayout::totalWidth() const
{
    return m_entry + (m_starts.isEmpty() ? 0 : m_starts.last());
}

int GridLayout::columnAt(int x) const
{
    if (m_starts.isEmpty() || x < m_entry)
        return -1;
    const int place = x - m_entry + (x < fixedWidth() ? 0 : m_scroll);
    const auto after = std::upper_bound(m_starts.begin(), m_starts.end(), place);
    const int column = int(after - m_starts.begin()) - 1;
    return column >= 0 && column < count() ? column : -1;
}

std::pair<int, int> GridLayout::scrolledInSight(int viewportWidth) const
{
    if (m_frozen >= count() || viewportWidth <= fixedWidth())
        return {0, -1};
    const int first = std::max(columnAt(fixedWidth()), m_frozen);
    const int last = columnAt(viewportWidth - 1);
    return {first, last < 0 ? count() - 1 : last};
}

} // namespace tarnwick

#include "UntakenTubes.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

namespace plans {

UntakenTubes::UntakenTubes(const ellery::SteamGen &steamGen, const ellery::TubeStates &states)
{
    double top = 0;
    for (int i = 0; i < steamGen.numTube(); ++i) {
        const double x = double(steamGen[i].x);
        const double y = double(steamGen[i].y);
        if (states.isSelected(i) || !std::isfinite(x) || !std::isfinite(y))
            continue;
        m_bottom = m_entries.empty() ? y : std::min(m_bottom, y);
        top = m_entries.empty() ? y : std::max(top, y);
        m_entries.push_back({x, y, i, 0});
    }
    m_left = qsizetype(m_entries.size());
    if (m_entries.empty())
        return;
    // The number of strips is about the number of tubes in a strip.
    const double count = std::ceil(std::sqrt(double(m_entries.size())));
    m_height = (top - m_bottom) / count;
    if (!(m_height > 0))
        m_height = 1;
    m_strips.resize(size_t(count) + 1);
    for (Entry &entry : m_entries)
        entry.strip = stripAt(entry.y);
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry &a, const Entry &b) {
        return std::tie(a.strip, a.x, a.tube) < std::tie(b.strip, b.x, b.tube);
    });
    for (size_t i = 0; i < m_entries.size(); ++i) {
        Strip &strip = m_strips[size_t(m_entries[i].strip)];
        const double y = m_entries[i].y;
        if (strip.end == 0)
            strip = {y, y, i, i};
        strip.bottom = std::min(strip.bottom, y);
        strip.top = std::max(strip.top, y);
        strip.end = i + 1;
    }
    m_next.resize(m_entries.size() + 1);
    std::iota(m_next.begin(), m_next.end(), size_t(0));
}

int UntakenTubes::stripAt(double y) const
{
    const double strip = (y - m_bottom) / m_height;
    const int last = int(m_strips.size()) - 1;
    return strip <= 0 ? 0 : strip >= last ? last : int(strip);
}

size_t UntakenTubes::firstLeft(size_t place)
{
    size_t first = place;
    while (m_next[first] != first)
        first = m_next[first];
    while (m_next[place] != first)
        place = std::exchange(m_next[place], first);
    return first;
}

void UntakenTubes::takeFrom(const Strip &strip, double x, double y, double radius, double reach, QList<qint32> &taken)
{
    // Horizontal reach of the circle at the nearest edge of the strip.
    const double away = std::max({0.0, strip.bottom - y, y - strip.top});
    if (strip.begin == strip.end || away > reach)
        return;
    const double half = std::sqrt(reach * reach - away * away);
    const auto begin = m_entries.begin() + qsizetype(strip.begin);
    const auto first = std::lower_bound(begin, m_entries.begin() + qsizetype(strip.end), x - half,
                                        [](const Entry &entry, double left) { return entry.x < left; });
    for (size_t i = firstLeft(size_t(first - m_entries.begin())); i < strip.end && m_entries[i].x <= x + half;
         i = firstLeft(i + 1)) {
        const double dx = x - m_entries[i].x;
        const double dy = y - m_entries[i].y;
        if (std::sqrt(dx * dx + dy * dy) > radius)
            continue;
        taken.append(m_entries[i].tube);
        m_next[i] = i + 1;
        --m_left;
    }
}

QList<qint32> UntakenTubes::take(double x, double y, double radius)
{
    QList<qint32> taken;
    if (isEmpty() || !(radius >= 0) || !std::isfinite(x) || !std::isfinite(y))
        return taken;
    // The search is slightly wider, since rounding must not drop a tube whose rounded distance equals the radius; it is
    // limited to values whose squares are finite.
    constexpr double kFurthest = 1e100;
    const double reach = std::min(radius + (radius + std::abs(x) + std::abs(y)) * 1e-12, kFurthest);
    const int last = stripAt(y + reach);
    for (int strip = stripAt(y - reach); strip <= last; ++strip)
        takeFrom(m_strips[size_t(strip)], x, y, radius, reach, taken);
    std::sort(taken.begin(), taken.end());
    return taken;
}

} // namespace plans

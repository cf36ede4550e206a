#include "SideBySide.h"

#include <algorithm>
#include <ctime>

namespace bench {

namespace {

constexpr double kNanosecond = 1e-9;
constexpr double kMicroseconds = 1e6;

double seconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * kNanosecond;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double median(const std::vector<Spent> &all, double Spent::*kind)
{
    std::vector<double> values;
    for (const Spent &one : all)
        values.push_back(one.*kind);
    return median(values);
}

} // namespace

Spent now()
{
    return {seconds(CLOCK_MONOTONIC), seconds(CLOCK_PROCESS_CPUTIME_ID)};
}

void SideBySide::report(benchmark::State &state, qint64 items) const
{
    const double scale = kMicroseconds / double(items);
    std::vector<double> ratios;
    for (size_t i = 0; i < m_ours.size(); ++i)
        ratios.push_back(m_ours[i].cpu / m_plain[i].cpu);
    const auto [lowest, highest] = std::minmax_element(ratios.begin(), ratios.end());
    state.counters["ours_us"] = median(m_ours, &Spent::cpu) * scale;
    state.counters["plain_us"] = median(m_plain, &Spent::cpu) * scale;
    state.counters["ratio"] = median(m_ours, &Spent::cpu) / median(m_plain, &Spent::cpu);
    state.counters["ratio_low"] = *lowest;
    state.counters["ratio_high"] = *highest;
    state.counters["wall_ratio"] = median(m_ours, &Spent::wall) / median(m_plain, &Spent::wall);
}

} // namespace bench

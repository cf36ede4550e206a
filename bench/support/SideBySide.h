#pragma once
#include <benchmark/benchmark.h>
#include <QtGlobal>
#include <vector>

namespace bench {

/// Seconds of one run.
struct Spent
{
    double wall = 0;
    double cpu = 0; ///< of this process; independent of other work on the machine
};

/// The current times; subtract two results.
Spent now();

/// Runs the same work by the program and by plain SQLite alternately in one run, so that changes in the machine's load
/// affect both. The first round warms up and is not counted.
class SideBySide
{
public:
    /// Runs the rounds of the state, which must use UseManualTime(); its time is that of the program. items: number of
    /// items per round, for times per item.
    template <typename Ours, typename Plain>
    static void run(benchmark::State &state, qint64 items, Ours ours, Plain plain)
    {
        plain();
        ours();
        SideBySide rounds;
        bool plainFirst = true;
        for (auto _ : state) {
            if (plainFirst)
                rounds.m_plain.push_back(spent(plain));
            rounds.m_ours.push_back(spent(ours));
            if (!plainFirst)
                rounds.m_plain.push_back(spent(plain));
            plainFirst = !plainFirst;
            state.SetIterationTime(rounds.m_ours.back().wall);
        }
        rounds.report(state, items);
    }

private:
    template <typename Work>
    static Spent spent(Work &work)
    {
        const Spent start = now();
        work();
        const Spent end = now();
        return {end.wall - start.wall, end.cpu - start.cpu};
    }
    /// Adds counters: ours_us and plain_us, the medians of processor time per item; ratio, of the medians, with the
    /// lowest and highest of single rounds; wall_ratio.
    void report(benchmark::State &state, qint64 items) const;

    std::vector<Spent> m_ours;
    std::vector<Spent> m_plain;
};

} // namespace bench

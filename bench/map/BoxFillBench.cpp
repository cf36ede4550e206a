// Compares the box fill with a plain double loop over selected and other tubes.
#include "SampleBundle.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <plans/BoxFill.h>

using ellery::SteamGen;
using ellery::TubeStates;

namespace {

/// A bundle with that many selected tubes, distributed over the whole bundle.
TubeStates withSelection(int count, int selected)
{
    TubeStates tubes(count);
    quint32 state = 1;
    while (tubes.selectedCount() < selected) {
        state = state * 1664525U + 1013904223U;
        tubes.setSelected(int((state >> 8) % quint32(count)), true);
    }
    return tubes;
}

QList<qint32> doubleLoop(const SteamGen &sg, const TubeStates &tubes, double radius)
{
    QList<qint32> found;
    std::vector<bool> taken(size_t(sg.numTube()));
    for (int a = 0; a < sg.numTube(); ++a) {
        if (!tubes.isSelected(a))
            continue;
        for (int b = 0; b < sg.numTube(); ++b) {
            if (tubes.isSelected(b))
                continue;
            const double dx = double(sg[a].x) - double(sg[b].x);
            const double dy = double(sg[a].y) - double(sg[b].y);
            if (std::sqrt(dx * dx + dy * dy) > radius || taken[size_t(b)])
                continue;
            found.append(b);
            taken[size_t(b)] = true;
        }
    }
    return found;
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    // Tubes, selected, radius in pitches.
    benchmark->Args({16000, 2000, 3})->Args({16000, 8000, 60})->Unit(benchmark::kMillisecond);
}

void boxFill(benchmark::State &state)
{
    const SteamGen steamGen = bundle(int(state.range(0)));
    const TubeStates tubes = withSelection(steamGen.numTube(), int(state.range(1)));
    plans::BoxFill fill;
    fill.parameters.radius = double(state.range(2));
    const plans::FillInput input{steamGen, tubes, nullptr};
    const QList<qint32> found = fill.pick(input).tubes;
    if (found != doubleLoop(steamGen, tubes, fill.parameters.radius)) {
        state.SkipWithError("other tubes than the double loop, or another order");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(fill.pick(input));
    state.counters["found"] = double(found.size());
}
BENCHMARK(boxFill)->Apply(sizes);

void boxFillDoubleLoop(benchmark::State &state)
{
    const SteamGen steamGen = bundle(int(state.range(0)));
    const TubeStates tubes = withSelection(steamGen.numTube(), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(doubleLoop(steamGen, tubes, double(state.range(2))));
}
BENCHMARK(boxFillDoubleLoop)->Apply(sizes);

} // namespace

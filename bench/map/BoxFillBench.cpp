// The box fill beside the plain double loop over selected and other tubes.
#include "SampleBundle.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <plans/BoxFill.h>

using ellery::SteamGen;

namespace {

/// As many selected tubes, scattered over the whole bundle.
SteamGen withSelection(int tubes, int selected)
{
    SteamGen steamGen = bundle(tubes);
    quint32 state = 1;
    while (steamGen.selectedCount() < selected) {
        state = state * 1664525U + 1013904223U;
        steamGen.setSelected(int((state >> 8) % quint32(steamGen.numTube())), true);
    }
    return steamGen;
}

QList<qint32> doubleLoop(SteamGen &sg, double radius)
{
    QList<qint32> found;
    sg.clearMarks();
    for (int a = 0; a < sg.numTube(); ++a) {
        if (!sg.isSelected(a))
            continue;
        for (int b = 0; b < sg.numTube(); ++b) {
            if (sg.isSelected(b))
                continue;
            const double dx = double(sg[a].x) - double(sg[b].x);
            const double dy = double(sg[a].y) - double(sg[b].y);
            if (std::sqrt(dx * dx + dy * dy) > radius || sg.isMarked(b))
                continue;
            found.append(b);
            sg.setMarked(b, true);
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
    SteamGen steamGen = withSelection(int(state.range(0)), int(state.range(1)));
    plans::BoxFill fill;
    fill.parameters.radius = double(state.range(2));
    fill.pick(steamGen);
    if (fill.tubes != doubleLoop(steamGen, fill.parameters.radius)) {
        state.SkipWithError("other tubes than the double loop, or another order");
        return;
    }
    for (auto _ : state)
        fill.pick(steamGen);
    state.counters["found"] = double(fill.tubes.size());
}
BENCHMARK(boxFill)->Apply(sizes);

void boxFillDoubleLoop(benchmark::State &state)
{
    SteamGen steamGen = withSelection(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(doubleLoop(steamGen, double(state.range(2))));
}
BENCHMARK(boxFillDoubleLoop)->Apply(sizes);

} // namespace

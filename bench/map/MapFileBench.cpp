// Map files, "Update Map" and undo, without a window.
#include "SampleBundle.h"

#include <app/logic/MapDocument.h>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <plans/BoxFill.h>
#include <plans/MapUndo.h>
#include <plans/PatternFill.h>
#include <plans/PcntFill.h>
#include <plans/QuerySource.h>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int kTubes = 16000;

class NoQueries : public plans::QuerySource
{
public:
    bool isReady() const override { return false; }
    std::unique_ptr<plans::QueryRecords> run(const QString &, const QString &) override { return nullptr; }
    void setQuiet(bool) override {}
    std::optional<plans::FillMark> rememberedMark(const QString &) const override { return std::nullopt; }
    void rememberMark(const QString &, const plans::FillMark &) override {}
};

class Silent : public tarnwick::UserPrompts
{
public:
    void showError(int, int, const QString &text) override { qFatal("%s", qPrintable(text)); }
    void showInformation(const QString &) override {}
    tarnwick::Answer ask(tarnwick::Buttons, const QString &, int) override { return tarnwick::Answer::No; }
    void showStatus(const QString &) override {}
};

/// A map with its undo, as the window has them.
class Bench : public plans::MapHost
{
public:
    Bench()
    {
        qputenv("PALOMINE_DIR", folder.path().toLocal8Bit()); // nothing of this user's is touched
        record.steamGen = bundle(kTubes);
        record.folder = folder.path();
        entries.setSteamGen(record.steamGen);
        document.setProject(&record);
        changes.captureExtras = [this] { return plans::MapExtras{1, 1, document.headerRecord()}; };
        changes.restoreExtras = [this](const plans::MapExtras &extras) { document.setHeaderRecord(extras.header); };
        changes.reset();
    }

    /// Entries with every tube each, in different orders.
    void addWholeFills(int count)
    {
        plans::MapLegend::Entries fills;
        const int all = record.steamGen.numTube();
        for (int n = 0; n < count; ++n) {
            auto fill = std::make_unique<plans::PcntFill>();
            fill->colour = quint32(n) * 0x010305;
            fill->tubes.reserve(all);
            for (int i = 0; i < all; ++i)
                fill->tubes.append((i + n) % all);
            fill->fillCount = all;
            fills.push_back(std::move(fill));
        }
        entries.replaceEntries(std::move(fills));
        changes.reset();
    }

    QTemporaryDir folder;
    Silent silent;
    NoQueries none;
    brannock::Project record;
    plans::MapLegend entries{record.steamGen};
    app::MapDocument document{entries, silent};
    plans::MapUndo changes{entries};

    brannock::Project &project() override { return record; }
    const ellery::SteamGen &steamGen() override { return record.steamGen; }
    ellery::TubeStates &tubes() override { return entries.tubes(); }
    plans::MapLegend &legend() override { return entries; }
    db::DatabaseSession &session() override { qFatal("no database here"); }
    tarnwick::UserPrompts &prompts() override { return silent; }
    plans::QuerySource &queries() override { return none; }
    void undoCheckpoint(const QString &label) override { changes.checkpoint(label); }
    void redrawMap() override {}
    void refreshLegend() override {}
    tarnwick::JMacro systemMacros() override { return {}; }
    tarnwick::JMacro userMacros() override { return {}; }
};

constexpr int kFills = 100;

void openMap(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    const QString path = bench.folder.filePath(u"a.map"_s);
    bench.document.storeMap(path);
    for (auto _ : state) {
        bench.document.readMap(path);
        bench.changes.reset();
    }
    state.counters["MB"] = double(QFileInfo(path).size()) / 1e6;
}
BENCHMARK(openMap)->Unit(benchmark::kMillisecond);

void storeMap(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    for (auto _ : state)
        bench.document.storeMap(bench.folder.filePath(u"a.map"_s));
}
BENCHMARK(storeMap)->Unit(benchmark::kMillisecond);

/// 50 fills of the three kinds that need no query; some 200 tubes are selected for the boxes.
void updateMap(benchmark::State &state)
{
    Bench bench;
    for (int i = 0; i < bench.record.steamGen.numTube(); i += 80)
        bench.entries.tubes().setSelected(i, true);
    for (int n = 0; n < 50; ++n) {
        std::unique_ptr<plans::MapFill> fill;
        if (n % 3 == 0) {
            auto random = std::make_unique<plans::PcntFill>();
            random->parameters.percent = 20;
            fill = std::move(random);
        } else if (n % 3 == 1) {
            auto pattern = std::make_unique<plans::PatternFill>();
            pattern->parameters.rowIncrement = 1 + n % 4;
            fill = std::move(pattern);
        } else {
            auto box = std::make_unique<plans::BoxFill>();
            box->parameters.radius = 3;
            fill = std::move(box);
        }
        bench.entries.addEntry(std::move(fill), true);
    }
    for (auto _ : state)
        bench.entries.updateAll(bench);
}
BENCHMARK(updateMap)->Unit(benchmark::kMillisecond);

/// Back and forth over one change of a legend of 100 fills, each as large as the component.
void undoRedo(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    bench.changes.checkpoint(u"Move Entry"_s);
    bench.entries.moveEntry(0, kFills - 1);
    for (auto _ : state) {
        bench.changes.undo();
        bench.changes.redo();
    }
}
BENCHMARK(undoRedo)->Unit(benchmark::kMillisecond);

/// The window asks after every change what can be undone and whether the map is saved.
void afterChange(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    bool there = false;
    for (auto _ : state) {
        bench.changes.checkpoint(u"Move Entry"_s);
        bench.entries.moveEntry(there ? kFills - 1 : 0, there ? 0 : kFills - 1);
        there = !there;
        benchmark::DoNotOptimize(bench.changes.canUndo());
        benchmark::DoNotOptimize(bench.changes.isModified());
    }
}
BENCHMARK(afterChange)->Unit(benchmark::kMillisecond);

/// Memory used by 100 changes; each recomputes one sample of half the tubes, selects 500 tubes, and moves an entry.
void undoMemory(benchmark::State &state)
{
    for (auto _ : state) {
        Bench bench;
        bench.addWholeFills(20);
        const size_t before = mallinfo2().uordblks;
        for (int n = 0; n < 100; ++n) {
            bench.changes.checkpoint(u"Random"_s);
            plans::PcntFill fill;
            fill.parameters.percent = 50;
            bench.entries.replaceEntry(n % 20, fill, bench);
            for (int i = 0; i < 500; ++i)
                bench.entries.tubes().setSelected((n * 131 + i * 7) % bench.record.steamGen.numTube(), true);
            bench.entries.moveEntry(n % 20, (n * 7) % 20);
        }
        bench.changes.canUndo();
        state.counters["MB"] = double(mallinfo2().uordblks - before) / 1e6;
        state.counters["levels"] = bench.changes.stack().count();
    }
}
BENCHMARK(undoMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

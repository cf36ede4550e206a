// Map files, "Update Map" and undo, without a window.
#include "SampleBundle.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <map/FillCommit.h>
#include <map/MapFiles.h>
#include <map/MapUpdate.h>
#include <plans/BoxFill.h>
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
    std::optional<ellery::TubeMark> rememberedMark(const QString &) const override { return std::nullopt; }
    void rememberMark(const QString &, const ellery::TubeMark &) override {}
};

class Silent : public tarnwick::UserPrompts
{
public:
    void showError(int, int, const QString &text) override { qFatal("%s", qPrintable(text)); }
    void showInformation(const QString &) override {}
    tarnwick::Answer ask(tarnwick::Buttons, const QString &, int) override { return tarnwick::Answer::No; }
    void showStatus(const QString &) override {}
};

/// A map with what fills need.
struct Bench
{
    Bench()
    {
        qputenv("PALOMINE_DIR", folder.path().toLocal8Bit()); // nothing of this user's is touched
        record.steamGen = bundle(kTubes);
        record.folder = folder.path();
        document.setProject(&record);
    }

    /// Entries with every tube each, in different orders.
    void addWholeFills(int count)
    {
        map::MapFile content;
        const int all = record.steamGen.numTube();
        for (int n = 0; n < count; ++n) {
            auto fill = std::make_unique<plans::PcntFill>();
            fill->mark.colour = tarnwick::ColourRef(quint32(n) * 0x010305);
            fill->tubes.reserve(all);
            for (int i = 0; i < all; ++i)
                fill->tubes.append((i + n) % all);
            fill->fillCount = all;
            content.entries.push_back(std::move(fill));
        }
        document.setContent(content, {}, {});
    }
    void add(std::unique_ptr<plans::MapFill> fill)
    {
        document.change(u"Fill"_s, [&fill](map::MapEdit &edit) { edit.addEntry(std::move(fill), true); });
    }
    void move(int from, int to)
    {
        document.change(u"Move Entry"_s, [from, to](map::MapEdit &edit) { edit.moveEntry(from, to); });
    }
    void select(const QList<qint32> &tubes)
    {
        document.change(u"Select Tubes"_s, [&tubes](map::MapEdit &edit) { edit.setSelection(tubes); });
    }

    QTemporaryDir folder;
    Silent silent;
    NoQueries none;
    brannock::Project record;
    map::MapDocument document;
    map::FillRunner runner{none, silent};
};

constexpr int kFills = 100;

void openMap(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    const QString path = bench.folder.filePath(u"a.map"_s);
    map::storeMap(bench.document, path, bench.silent);
    for (auto _ : state)
        map::readMap(bench.document, path, bench.silent);
    state.counters["MB"] = double(QFileInfo(path).size()) / 1e6;
}
BENCHMARK(openMap)->Unit(benchmark::kMillisecond);

void storeMap(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    for (auto _ : state)
        map::storeMap(bench.document, bench.folder.filePath(u"a.map"_s), bench.silent);
}
BENCHMARK(storeMap)->Unit(benchmark::kMillisecond);

/// 50 fills of the three kinds that need no query; some 200 tubes are selected for the boxes.
void updateMap(benchmark::State &state)
{
    Bench bench;
    QList<qint32> some;
    for (int i = 0; i < bench.record.steamGen.numTube(); i += 80)
        some.append(i);
    bench.select(some);
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
        bench.add(std::move(fill));
    }
    for (auto _ : state)
        map::MapUpdate(bench.document, bench.runner).run(nullptr);
}
BENCHMARK(updateMap)->Unit(benchmark::kMillisecond);

/// Back and forth over one change of a legend of 100 fills, each as large as the component.
void undoRedo(benchmark::State &state)
{
    Bench bench;
    bench.addWholeFills(kFills);
    bench.move(0, kFills - 1);
    for (auto _ : state) {
        bench.document.undo();
        bench.document.redo();
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
        bench.move(there ? kFills - 1 : 0, there ? 0 : kFills - 1);
        there = !there;
        benchmark::DoNotOptimize(bench.document.canUndo());
        benchmark::DoNotOptimize(bench.document.isModified());
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
            auto fill = std::make_unique<plans::PcntFill>();
            fill->parameters.percent = 50;
            bench.runner.compute(*fill, bench.record.steamGen, bench.document.tubes());
            QList<qint32> selection = bench.document.selection();
            for (int i = 0; i < 500; ++i)
                selection.append((n * 131 + i * 7) % bench.record.steamGen.numTube());
            bench.document.change(u"Random"_s, [&](map::MapEdit &edit) {
                edit.replaceEntry(n % 20, std::move(fill));
                edit.setSelection(selection);
                edit.moveEntry(n % 20, (n * 7) % 20);
            });
        }
        state.counters["MB"] = double(mallinfo2().uordblks - before) / 1e6;
        state.counters["levels"] = bench.document.history().count();
    }
}
BENCHMARK(undoMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

#include <bench/SilentPrompts.h>

#include <bench/PlainDatabase.h>
#include <bench/ReportTable.h>
#include <bench/SideBySide.h>
#include <QTemporaryDir>
#include <results/history/HistoryList.h>
#include <tarnwick/FileWriter.h>

namespace {

using results::HistoryList;
using results::HistorySort;
using results::OutageMode;

constexpr qint64 kRows = 1'000'000;

/// The columns that become a history entry, in the order of the fetch.
constexpr const char *kPlainSql =
    "SELECT sec, row, col, chan, volts, phase, pcnt, defect, cal_num, leg, beg_test, end_test, probe_size, probe_model,"
    " analyst_id, oper_id, outage, from_land, from_off, from_pnt, to_land, to_off, to_pnt, loc_land, loc_off, loc_pnt,"
    " loc_dist, entry_time FROM report"
    " ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC";

/// A million rows of 'report', and a list on them.
class Opened
{
public:
    Opened()
    {
        session.open(path, dao::OpenMode::ReadOnly);
        list.fetchFilters();
    }
    void fetch()
    {
        if (list.fetch() != tarnwick::Outcome::Done || list.count() != kRows)
            qFatal("the fetch is not complete");
    }

    QString path = bench::reportDatabase(kRows);
    bench::SilentPrompts prompts;
    db::DatabaseSession session{prompts};
    results::ArvoHistoryOptions options;
    HistoryList list{session, bench::resultsProject(), options};
};

Opened &opened()
{
    static Opened made;
    return made;
}

/// Fetching, numbering and filtering.
void historyFetch(benchmark::State &state)
{
    const bench::PlainDatabase plainDatabase(opened().path);
    const auto plain = [&] {
        bench::PlainStatement select(plainDatabase, kPlainSql);
        qint64 sum = 0;
        while (select.step())
            sum += select.readRow();
        benchmark::DoNotOptimize(sum);
    };
    bench::SideBySide::run(
        state, kRows, [] { opened().fetch(); }, plain);
}
BENCHMARK(historyFetch)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

HistoryList &fetched()
{
    static const bool isFetched = [] {
        opened().fetch();
        return true;
    }();
    benchmark::DoNotOptimize(isFetched);
    return opened().list;
}

void historyFilter(benchmark::State &state)
{
    HistoryList &list = fetched();
    list.sortBy(HistorySort(state.range(1)));
    int change = 0;
    for (auto _ : state) {
        list.choices().mode = OutageMode(state.range(0));
        list.choices().outages.first().keep = ++change % 2 == 0;
        list.choices().defects.first().volts = change % 3;
        list.applyFilter();
    }
    state.counters["kept"] = list.kept();
    list.sortBy(HistorySort::Fetched);
}
BENCHMARK(historyFilter)
    ->ArgNames({"mode", "sort"})
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({2, 0})
    ->Args({0, int(HistorySort::Volts)})
    ->Unit(benchmark::kMillisecond);

void historySort(benchmark::State &state)
{
    HistoryList &list = fetched();
    for (auto _ : state)
        list.sortBy(HistorySort(state.range(0)));
    list.sortBy(HistorySort::Fetched);
}
BENCHMARK(historySort)->ArgName("by")->DenseRange(1, 6)->Unit(benchmark::kMillisecond);

/// Loading a file of a million entries, beside reading its bytes and finding its cells.
void historyOpen(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("million.hst"));
    HistoryList &list = fetched();
    list.choices().mode = OutageMode::All;
    for (results::DefectChoice &choice : list.choices().defects)
        choice.volts = results::DefectChoice::kNoThreshold;
    list.applyFilter();
    if (!list.saveAs(path) || list.kept() != kRows)
        qFatal("not stored");
    results::ArvoHistoryOptions options;
    HistoryList loaded(opened().session, bench::resultsProject(), options);
    const auto ours = [&] {
        if (!loaded.open(path) || loaded.count() != kRows)
            qFatal("not every entry was read");
    };
    const auto plain = [&] {
        const QByteArray bytes = tarnwick::readFile(path);
        qint64 cells = 0;
        for (const char c : bytes)
            cells += c == '\t' || c == '\n' ? 1 : 0;
        benchmark::DoNotOptimize(cells);
    };
    bench::SideBySide::run(state, kRows, ours, plain);
}
BENCHMARK(historyOpen)->UseManualTime()->Iterations(2)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

#include "Figures.h"

#include <bench/Memory.h>
#include <bench/SideBySide.h>

#include <demo/Random.h>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;
using dao::Recordset;

constexpr qint64 kMillion = 1'000'000;

/// Compares opening a dynaset, with all keys read, with reading the same row ids in the same order. Also reports the
/// bytes per row used by the open dynaset and at most while opening.
void openAgainstWalk(benchmark::State &state, const QString &sql, const char *walkSql)
{
    const qint64 rows = state.range(0);
    Opened opened(rows);
    const auto ours = [&] {
        Recordset dynaset(opened.database);
        dynaset.open(Recordset::Type::Dynaset, sql);
        if (dynaset.recordCount() != rows)
            state.SkipWithError("rows are missing");
    };
    const auto plain = [&] {
        PlainStatement walk(opened.plain, walkSql);
        qint64 sum = 0;
        while (walk.step())
            sum += sqlite3_column_int64(walk.handle(), 0);
        benchmark::DoNotOptimize(sum);
    };
    SideBySide::run(state, rows, ours, plain);

    const qint64 before = residentBytes();
    resetPeak();
    Recordset dynaset(opened.database);
    dynaset.open(Recordset::Type::Dynaset, sql);
    state.counters["row_bytes"] = double(residentBytes() - before) / double(rows);
    state.counters["row_bytes_peak"] = double(peakBytes() - before) / double(rows);
}

void openTable(benchmark::State &state)
{
    openAgainstWalk(state, u"SELECT * FROM report"_s, "SELECT recd_num FROM report ORDER BY recd_num");
}
BENCHMARK(openTable)->UseManualTime()->Iterations(7)->Arg(kMillion)->Arg(5 * kMillion)->Unit(benchmark::kMillisecond);

void openInHistoryOrder(benchmark::State &state)
{
    openAgainstWalk(state, kHistorySql,
                    "SELECT recd_num FROM report "
                    "ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC");
}
BENCHMARK(openInHistoryOrder)->UseManualTime()->Iterations(3)->Arg(kMillion)->Unit(benchmark::kMillisecond);
BENCHMARK(openInHistoryOrder)->UseManualTime()->Iterations(1)->Arg(5 * kMillion)->Unit(benchmark::kMillisecond);

/// Reads single rows by bookmark, all columns, in random order.
void readByBookmark(benchmark::State &state)
{
    constexpr int kReads = 50'000;
    Opened opened(kMillion);
    Recordset dynaset(opened.database);
    dynaset.open(Recordset::Type::Dynaset, u"SELECT * FROM report"_s);
    std::vector<qint64> keys;
    std::vector<QByteArray> bookmarks;
    demo::Random random = demo::Random::of(1, 2, 3);
    for (int i = 0; i < kReads; ++i) {
        const int row = random.between(0, int(kMillion) - 1);
        dynaset.setPosition(row);
        bookmarks.push_back(dynaset.bookmark());
        keys.push_back(row + 1);
    }
    const auto ours = [&] {
        qint64 sum = 0;
        for (const QByteArray &bookmark : bookmarks) {
            dynaset.setBookmark(bookmark);
            sum += readRow(dynaset);
        }
        benchmark::DoNotOptimize(sum);
    };
    PlainStatement select(opened.plain, "SELECT * FROM report WHERE recd_num = ?");
    const auto plain = [&] {
        opened.plain.run("BEGIN");
        qint64 sum = 0;
        for (const qint64 key : keys) {
            sqlite3_bind_int64(select.handle(), 1, key);
            select.step();
            sum += select.readRow();
            select.reset();
        }
        benchmark::DoNotOptimize(sum);
        opened.plain.run("COMMIT");
    };
    SideBySide::run(state, kReads, ours, plain);
}
BENCHMARK(readByBookmark)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

} // namespace

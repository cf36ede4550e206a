// The SQL editor's window with a million rows and more. The time per round is that of the whole execution.
#include "Editor.h"

#include <bench/Memory.h>
#include <bench/PlainDatabase.h>
#include <query/dialogs/JQueryWin.h>
#include <query/dialogs/QueryPage.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;

/// Executes a select in the window, and collects the same keys with plain SQLite. Counters: the time until the first
/// page is painted; memory per row.
void select(benchmark::State &state, const QString &sql, const char *keySql)
{
    const qint64 rows = state.range(0);
    Project project(rows);
    const PlainDatabase plainDatabase(project.path);
    Editor editor(project);
    std::vector<Spent> firstPages;
    const auto ours = [&] { firstPages.push_back(editor.execute(sql)); };
    const auto plain = [&] {
        PlainStatement walk(plainDatabase, keySql);
        std::vector<qint64> keys;
        while (walk.step())
            keys.push_back(sqlite3_column_int64(walk.handle(), 0));
        benchmark::DoNotOptimize(keys.data());
    };
    editor.execute(sql); // fills the page cache
    editor.execute(u"SELECT TOP 300 * FROM report"_s);
    const qint64 before = residentBytes();
    editor.execute(sql);
    const qint64 after = residentBytes();
    SideBySide::run(state, rows, ours, plain);
    if (editor.dialog().page().table().grid().rowCount() != rows)
        state.SkipWithError("rows are missing");
    setTimes(state, "first_page", firstPages);
    state.counters["row_bytes"] = double(after - before) / double(rows);
}

void selectInTableOrder(benchmark::State &state)
{
    select(state, kTableSql, "SELECT recd_num FROM report ORDER BY recd_num");
}
BENCHMARK(selectInTableOrder)
    ->UseManualTime()
    ->Iterations(7)
    ->Arg(kMillion)
    ->Arg(5 * kMillion)
    ->Unit(benchmark::kMillisecond);

void selectInHistoryOrder(benchmark::State &state)
{
    select(state, kHistorySql,
           "SELECT recd_num FROM report "
           "ORDER BY sec, row, col, outage DESC, defect, volts DESC, pcnt DESC, phase DESC");
}
BENCHMARK(selectInHistoryOrder)->UseManualTime()->Iterations(3)->Arg(kMillion)->Unit(benchmark::kMillisecond);
BENCHMARK(selectInHistoryOrder)->UseManualTime()->Iterations(1)->Arg(5 * kMillion)->Unit(benchmark::kMillisecond);

/// Goes to a random row, reads its page and paints it.
void jump(benchmark::State &state)
{
    Project project(state.range(0));
    Editor editor(project);
    editor.execute(kTableSql);
    query::JQueryWin &table = editor.dialog().page().table();
    quint32 random = 1;
    for (auto _ : state) {
        random = random * 1664525U + 1013904223U;
        const int row = int(random % quint32(table.grid().rowCount()));
        table.scrollTo(table.grid().index(row, 0), QAbstractItemView::PositionAtCenter);
        benchmark::DoNotOptimize(table.viewport()->grab());
        QCoreApplication::processEvents(); // as in the program, each page is read in a lock of its own
    }
}
BENCHMARK(jump)->Arg(kMillion)->Arg(5 * kMillion)->Unit(benchmark::kMillisecond);

/// From the SQL button to the painted editor.
void openEditor(benchmark::State &state)
{
    Project project(kMillion);
    for (auto _ : state)
        benchmark::DoNotOptimize(Editor(project).dialog().grab());
}
BENCHMARK(openEditor)->Unit(benchmark::kMillisecond);

/// From Esc to the end of the statement. Counter: the longest time of all rounds.
void stop(benchmark::State &state, const QString &sql)
{
    constexpr int kRunFor = 300;
    Project project(kMillion);
    Editor editor(project);
    editor.dialog().page().sql().setSql(sql);
    double longest = 0;
    for (auto _ : state) {
        Spent pressed;
        QTimer::singleShot(kRunFor, [&] {
            pressed = now();
            QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QApplication::sendEvent(&editor.dialog(), &key);
        });
        editor.dialog().execute();
        const double seconds = now().wall - pressed.wall;
        if (pressed.wall == 0)
            state.SkipWithError("ended before it could be stopped");
        longest = qMax(longest, seconds);
        state.SetIterationTime(seconds);
    }
    constexpr double kMilliseconds = 1000;
    state.counters["longest_ms"] = longest * kMilliseconds;
}
BENCHMARK_CAPTURE(stop, sort, kHistorySql)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stop, rows, u"SELECT a.row FROM report a, report b"_s)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stop, groups, u"SELECT a.row, COUNT(*) FROM report a, report b GROUP BY a.row"_s)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stop, copies, u"SELECT DISTINCT a.recd_num, b.row FROM report a, report b"_s)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

} // namespace

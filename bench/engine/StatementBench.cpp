#include "Figures.h"
#include "Statements.h"

#include <bench/ReportTable.h>
#include <bench/SideBySide.h>
#include <db/Views.h>

#include <QFile>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;
using dao::Recordset;

constexpr qint64 kRows = 300'000;
/// Maximum ratio of the engine's time to that of expert SQL. If the engine is slower by less than the margin, the ratio
/// does not matter.
constexpr double kGoal = 1.5;
constexpr double kMarginUs = 500;

/// Database with the report table, tubes, repairs, labels of all numbers, and the views with labels.
QString wholeDatabase()
{
    const QString path = reportDatabase(kRows) + u".whole-1"_s;
    if (QFile::exists(path))
        return path;
    const QString unfinished = path + u".unfinished"_s;
    QFile::remove(unfinished);
    QFile::copy(reportDatabase(kRows), unfinished);
    {
        PlainDatabase plain(unfinished);
        plain.run("BEGIN");
        plain.run("INSERT INTO tubes (sec, row, col) SELECT DISTINCT sec, row, col FROM report");
        plain.run(
            "INSERT INTO repairs (sec, row, col, repair_type, date_scheduled) SELECT sec, row, col, 'PLUG', 45000 "
            "FROM tubes WHERE (row * 7 + col) % 10 = 0");
        for (const char *label : {"row", "col", "sec", "leg"})
            plain.run(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT -1 UNION ALL SELECT i + 1 FROM n WHERE i < 199) "
                                     "INSERT INTO %1_alias (\"index\", \"%1\") SELECT i, i FROM n")
                          .arg(QLatin1StringView(label))
                          .toUtf8()
                          .constData());
        plain.run("COMMIT");
    }
    {
        dao::Workspace workspace;
        dao::Database database(workspace);
        database.open(unfinished);
        for (const QString &table : {u"report"_s, u"tubes"_s})
            database.createQuery({table + u'#', db::viewSql(database.table(table))});
        database.analyze();
    }
    QFile::rename(unfinished, path);
    return path;
}

/// Compile time of a statement. A stored query or an open recordset is already compiled, so this is not part of the
/// measured rounds.
double compileUs(dao::Database &database, const QString &sql)
{
    constexpr int kTimes = 20;
    const double start = now().cpu;
    for (int i = 0; i < kTimes; ++i)
        benchmark::DoNotOptimize(dao::QueryDef(database, sql).compiled().plan.index());
    return (now().cpu - start) * 1e6 / kTimes;
}

/// Compares all values, in any order. A result without rows is no evidence.
bool haveSameRows(Opened &opened, const dao::QueryDef &query, const char *expert)
{
    Checksum ours;
    Recordset rows(opened.database);
    for (rows.open(Recordset::Type::Snapshot, query); !rows.isEof(); rows.moveNext())
        ours.add(rows);
    Checksum plain;
    PlainStatement plainRows(opened.plain, expert);
    while (plainRows.step())
        plain.add(plainRows);
    return ours == plain && ours.rows() > 0;
}

/// Both sides prepare SQLite's SQL and read all cells of all rows.
void runPair(benchmark::State &state)
{
    const StatementPair &pair = statementPairs()[size_t(state.range(0))];
    state.SetLabel(pair.name);
    Opened opened(wholeDatabase());
    const QString sql = QString::fromUtf8(pair.access);
    const dao::QueryDef query(opened.database, sql);
    query.compiled();
    if (!haveSameRows(opened, query, pair.expert)) {
        state.SkipWithError("the two do not have the same rows");
        return;
    }
    qint64 count = 0;
    const auto ours = [&] {
        Recordset rows(opened.database);
        for (count = 0, rows.open(Recordset::Type::Snapshot, query); !rows.isEof(); rows.moveNext(), ++count)
            benchmark::DoNotOptimize(readRow(rows));
    };
    const auto plain = [&] {
        PlainStatement rows(opened.plain, pair.expert);
        while (rows.step())
            benchmark::DoNotOptimize(rows.readRow());
    };
    SideBySide::run(state, 1, ours, plain);
    state.counters["compile_us"] = compileUs(opened.database, sql);
    state.counters["rows"] = double(count);
    const double behind = state.counters["ours_us"] - state.counters["plain_us"];
    if (state.counters["ratio"] > kGoal)
        state.SetLabel(std::string(pair.name) +
                       (behind > kMarginUs ? " BEHIND THE GOAL" : " (behind, by less than 0.5 ms)"));
}
BENCHMARK(runPair)
    ->UseManualTime()
    ->Iterations(3)
    ->DenseRange(0, int64_t(statementPairs().size()) - 1)
    ->Unit(benchmark::kMillisecond);

} // namespace

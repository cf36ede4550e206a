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
/// The most that the engine's way may take of the expert's.
constexpr double kGoal = 1.5;

/// The report table, and beside it tubes, repairs, labels of all numbers, and the views with labels.
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

void runPair(benchmark::State &state)
{
    const StatementPair &pair = statementPairs()[size_t(state.range(0))];
    state.SetLabel(pair.name);
    Opened opened(wholeDatabase());
    const QString sql = QString::fromUtf8(pair.access);
    qint64 oursRows = 0;
    qint64 plainRows = 0;
    const auto ours = [&] {
        Recordset rows(opened.database);
        for (oursRows = 0, rows.open(Recordset::Type::Snapshot, sql); !rows.isEof(); rows.moveNext(), ++oursRows)
            benchmark::DoNotOptimize(readRow(rows));
    };
    const auto plain = [&] {
        PlainStatement rows(opened.plain, pair.expert);
        for (plainRows = 0; rows.step(); ++plainRows)
            benchmark::DoNotOptimize(rows.readRow());
    };
    SideBySide::run(state, 1, ours, plain);
    state.counters["rows"] = double(oursRows);
    if (oursRows != plainRows)
        state.SkipWithError("the two do not have the same rows");
    else if (state.counters["ratio"] > kGoal)
        state.SetLabel(std::string(pair.name) + " BEHIND THE GOAL");
}
BENCHMARK(runPair)
    ->UseManualTime()
    ->Iterations(3)
    ->DenseRange(0, int64_t(statementPairs().size()) - 1)
    ->Unit(benchmark::kMillisecond);

} // namespace

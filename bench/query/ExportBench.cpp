// What reads every row of a result: exports and counts. The peer reads the same rows with plain SQLite.
#include "Editor.h"

#include <bench/PlainDatabase.h>
#include <bench/ReportTable.h>
#include <query/ResultExport.h>
#include <query/TubeColumns.h>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;

class Result
{
public:
    explicit Result(const QString &sql)
    {
        if (!rows.run({}, sql) || rows.rowCount() != kMillion)
            qFatal("no rows");
    }
    Project project{kMillion};
    query::QueryResult rows{project.session, project.context};
    PlainDatabase plain{project.path};
};

void readPlainly(const PlainDatabase &database, const QString &sql)
{
    PlainStatement select(database, sql.toUtf8().constData());
    qint64 sum = 0;
    while (select.step())
        sum += select.readRow();
    benchmark::DoNotOptimize(sum);
}

void readCells(const query::QueryResult &rows)
{
    qint64 sum = 0;
    for (qint64 row = 0; row < rows.rowCount(); ++row)
        for (int column = 0; column < rows.columnCount(); ++column)
            sum += rows.value(row, column).isNull() ? 0 : 1;
    benchmark::DoNotOptimize(sum);
}

/// All cells of the result, as everything else reads them.
void readResult(benchmark::State &state)
{
    Result result(kExportSql);
    SideBySide::run(
        state, kMillion, [&] { readCells(result.rows); }, [&] { readPlainly(result.plain, kExportSql); });
}
BENCHMARK(readResult)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

/// A file of all rows, beside reading the cells of the result.
void exportAs(benchmark::State &state, query::ExportForm form)
{
    Result result(kExportSql);
    const QString file = result.project.folder.filePath(u"rows"_s);
    SideBySide::run(
        state, kMillion, [&] { query::exportRows(result.rows, form, file); }, [&] { readCells(result.rows); });
}
BENCHMARK_CAPTURE(exportAs, text, query::ExportForm::Text)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportAs, csv, query::ExportForm::Csv)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportAs, xlsx, query::ExportForm::Xlsx)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

/// The macro "[QUERY TOTAL TUBES]", beside reading its three columns of the result.
void totalTubes(benchmark::State &state)
{
    Result result(u"SELECT sec, row, col FROM report"_s);
    const auto ours = [&] {
        if (query::totalTubes(result.rows, resultsProject().steamGen) <= 0)
            qFatal("no tubes");
    };
    SideBySide::run(state, kMillion, ours, [&] { readCells(result.rows); });
}
BENCHMARK(totalTubes)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

#include "Figures.h"

#include <bench/PlainInserts.h>
#include <bench/ReportTable.h>
#include <bench/SideBySide.h>
#include <db/ReportRows.h>
#include <QTemporaryDir>

namespace {

using namespace bench;
using namespace Qt::StringLiterals;

/// Repeats the same results, each time with another outage.
template <typename Add>
void addRows(const brannock::Report &results, qint64 rows, Add add)
{
    brannock::ReportEntry entry;
    for (qint64 i = 0; i < rows; ++i) {
        entry = results.entries[i % results.numEntry()];
        entry.outage = u"R%1"_s.arg(i / results.numEntry());
        add(entry);
    }
}

/// Time to add rows to a new 'report' with its eleven indexes, in one transaction including the commit.
void appendRows(benchmark::State &state)
{
    constexpr qint64 kResults = 100'000;
    const qint64 rows = state.range(0);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"append.mdb"_s);
    brannock::Report results;
    makeResults(kResults, [&](const brannock::ReportEntry &entry) { results.entries.append(entry); });
    const auto ours = [&] {
        makeDatabase(path);
        dao::Workspace workspace;
        dao::Database database(workspace);
        database.open(path);
        dao::Transaction transaction(workspace);
        db::ReportWriter writer(database);
        addRows(results, rows, [&](brannock::ReportEntry &entry) { writer.add(entry); });
        transaction.commit();
    };
    const auto plain = [&] {
        makeDatabase(path);
        PlainInserts inserts(path);
        addRows(results, rows, [&](const brannock::ReportEntry &entry) { inserts.add(entry); });
        inserts.commit();
    };
    SideBySide::run(state, rows, ours, plain);
}
BENCHMARK(appendRows)->UseManualTime()->Iterations(5)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(appendRows)->UseManualTime()->Iterations(2)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

} // namespace

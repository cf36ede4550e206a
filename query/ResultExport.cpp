#include "ResultExport.h"

#include "Messages.h"

#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>

namespace query {

using namespace Qt::StringLiterals;

dao::CellFailures exportText(const QueryResult &result, const QString &machinePath, tarnwick::Progress *progress)
{
    dao::CellFailures failures;
    tarnwick::AtomicFile file(machinePath);
    tarnwick::ProgressLoop loop(progress, result.rowCount(), u"Exporting"_s);
    for (qint64 row = 0; row < result.rowCount(); ++row) {
        loop.tick(row);
        QString line = u"|"_s;
        for (int column = 0; column < result.columnCount(); ++column) {
            line += result.cellText(row, column).rightJustified(result.column(column).width) + u'|';
            const bool isCalculated = result.source(column).source < 0;
            if (const dao::Value value = isCalculated ? result.value(row, column) : dao::Value(); value.isError())
                failures.add(int(value.integer()));
        }
        line += u'\n';
        file.write(line.toUtf8());
    }
    file.commit();
    return failures;
}

bool exportText(const QueryResult &result, const QString &machinePath, tarnwick::UserPrompts &prompts,
                tarnwick::Progress *progress)
{
    const auto write = [&] {
        const dao::CellFailures failures = exportText(result, machinePath, progress);
        if (!failures.isEmpty())
            prompts.information(messages::kCellsFailed, failures.summary());
    };
    const tarnwick::Outcome outcome = attemptCancellable(prompts, write, messages::kExportResults);
    if (outcome == tarnwick::Outcome::Cancelled)
        prompts.status(messages::kCancelled);
    return outcome == tarnwick::Outcome::Done;
}

} // namespace query

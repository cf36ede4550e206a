#include "CommandLine.h"
#include "CommandTable.h"
#include "SqlOutput.h"
#include "Target.h"

#include <results/UploadRun.h>

#include <algorithm>

namespace cli {

using namespace Qt::StringLiterals;
using brannock::ReportLog;
using dao::Value;

int runLog(const Arguments &arguments)
{
    arguments.atMost(1);
    const auto writer = makeRowWriter(arguments);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    int damaged = 0;
    const QList<ReportLog::Entry> entries = ReportLog(target.project().folder).entries(&damaged);
    // Only the database can tell what became of an upload that was interrupted.
    const bool hasInterrupted = std::any_of(entries.begin(), entries.end(), [](const ReportLog::Entry &entry) {
        return entry.state == ReportLog::Entry::State::Interrupted;
    });
    const bool canLook = hasInterrupted && target.connect(Target::Use::Read);
    using dao::DataType;
    writer->begin({{u"time"_s, DataType::Text},
                   {u"user"_s, DataType::Text},
                   {u"work"_s, DataType::Text},
                   {u"file"_s, DataType::Text},
                   {u"state"_s, DataType::Text},
                   {u"entries"_s, DataType::Long},
                   {u"stored"_s, DataType::Long},
                   {u"skipped"_s, DataType::Long},
                   {u"problems"_s, DataType::Long}});
    for (const ReportLog::Entry &entry : entries) {
        const QString state = results::loggedState(entry, canLook ? &target.session().database() : nullptr);
        QList<Value> cells;
        for (const QString &text : {entry.time, entry.user, entry.work, entry.file, state})
            cells.append(Value::fromText(text));
        for (const int number : {entry.entries, entry.stored, entry.skipped, entry.problems})
            cells.append(Value::fromLong(number));
        writer->row(cells);
    }
    writer->end();
    if (damaged > 0)
        printError(u"%1 lines of the log cannot be read\n"_s.arg(damaged));
    return Done;
}

} // namespace cli

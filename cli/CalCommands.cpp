#include "CommandLine.h"
#include "CommandTable.h"
#include "SqlOutput.h"
#include "Target.h"

#include <dao/ProgressScope.h>
#include <db/SessionTransaction.h>
#include <results/CalList.h>
#include <results/Messages.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;
using dao::Value;

int runCals(const Arguments &arguments)
{
    arguments.atMost(1);
    const auto writer = makeRowWriter(arguments);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect(Target::Use::Read))
        return Failed;
    QList<results::CalList::Row> cals;
    const auto read = [&] { cals = results::readCals(target.session().database()); };
    if (!tarnwick::attempt(target.prompts(), read, results::messages::kUpdateCalList))
        return Failed;
    using dao::DataType;
    writer->begin({{u"site_code"_s, DataType::Text},
                   {u"comp"_s, DataType::Text},
                   {u"outage"_s, DataType::Text},
                   {u"cal_num"_s, DataType::Long},
                   {u"oper_type"_s, DataType::Text},
                   {u"sec"_s, DataType::Long},
                   {u"count"_s, DataType::Long}});
    for (const auto &[cal, count] : std::as_const(cals))
        writer->row({Value::fromText(cal.siteCode), Value::fromText(cal.comp), Value::fromText(cal.outage),
                     Value::fromLong(cal.calNum), Value::fromText(cal.operType), Value::fromLong(cal.sec),
                     Value::fromLong(count)});
    writer->end();
    return Done;
}

int runDeleteCal(const Arguments &arguments)
{
    arguments.atMost(1);
    for (const char16_t *name : {u"site", u"comp", u"oper-type", u"outage", u"sec", u"cal"}) {
        if (!arguments.has(QString::fromUtf16(name)))
            throw UsageError(u"--%1 is missing: a cal is named by all six options."_s.arg(QString::fromUtf16(name)));
    }
    constexpr int kMost = 0x7FFF;
    const results::Cal cal{arguments.value(u"site"),
                           arguments.value(u"comp"),
                           arguments.value(u"oper-type"),
                           arguments.value(u"outage"),
                           int(arguments.integer(u"sec", 0, 0, kMost)),
                           int(arguments.integer(u"cal", 0, 0, kMost))};
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect())
        return Failed;
    ConsoleProgress progress;
    const dao::ProgressScope stoppable(target.session().database(), &progress);
    db::SessionTransaction transaction(target.session());
    if (!transaction.begin())
        return Failed;
    int deleted = 0;
    const auto remove = [&] { deleted = results::deleteCalRows(target.session().database(), cal); };
    if (!tarnwick::attempt(target.prompts(), remove, results::messages::kCouldNotDeleteCal) || !transaction.commit())
        return Failed;
    if (deleted == 0) {
        printError(u"error: The database has no entries of this cal.\n"_s);
        return Failed;
    }
    print(QString::fromUtf16(results::messages::kCalDeleted.text) + u" %1 entries\n"_s.arg(deleted));
    return Done;
}

} // namespace cli

#include "CommandLine.h"
#include "CommandTable.h"
#include "SqlOutput.h"
#include "Target.h"
#include "TubeFile.h"

#include <results/repairs/RepairList.h>

namespace cli {

using namespace Qt::StringLiterals;
using results::Repair;
using results::RepairField;
using results::RepairList;
using results::RepairView;
using tarnwick::JDateTime;

namespace {

RepairView viewOf(const Arguments &arguments)
{
    static const QHash<QString, RepairView> views{{u"all"_s, RepairView::All},
                                                  {u"scheduled"_s, RepairView::Scheduled},
                                                  {u"completed"_s, RepairView::Completed},
                                                  {u"need-heat"_s, RepairView::NeedHeat}};
    const auto view = views.constFind(arguments.value(u"view", u"all"_s));
    if (view == views.constEnd())
        throw UsageError(u"--view is all, scheduled, completed or need-heat."_s);
    return *view;
}

/// The template of new repairs, from --type and --set. Throws UsageError.
void setFields(Repair &pattern, const Arguments &arguments)
{
    pattern.repairType = arguments.value(u"type").trimmed();
    for (const QString &assignment : arguments.values(u"set")) {
        const qsizetype equals = assignment.indexOf(u'=');
        const RepairField *field =
            equals < 1 ? nullptr : results::findRepairField(QStringView(assignment).left(equals).trimmed());
        const bool isAddress = field && std::holds_alternative<qint16 Repair::*>(field->member);
        if (!field || isAddress) {
            QStringList names;
            for (const RepairField &known : results::repairFields())
                if (!std::holds_alternative<qint16 Repair::*>(known.member))
                    names.append(QString::fromUtf16(known.name));
            throw UsageError(
                u"--set needs FIELD=VALUE, not \"%1\". Fields: %2."_s.arg(assignment, names.join(u", "_s)));
        }
        try {
            results::setRepairField(pattern, *field, assignment.mid(equals + 1));
        } catch (const tarnwick::Error &error) {
            throw UsageError(error.text());
        }
    }
    if (pattern.repairType.trimmed().isEmpty())
        throw UsageError(u"--set repair_type needs a text: every repair has a type."_s);
    if (pattern.dateScheduled.isNull())
        throw UsageError(u"--set date_scheduled needs a date: every repair has one."_s);
    try {
        results::checkLengths(pattern);
    } catch (const tarnwick::Error &error) {
        throw UsageError(error.text());
    }
}

} // namespace

int runRepairs(const Arguments &arguments)
{
    arguments.atMost(1);
    const auto writer = makeRowWriter(arguments);
    results::RepairOptions options;
    options.view = viewOf(arguments);
    options.outage = arguments.value(u"outage", results::kAllEntries);
    options.repairType = arguments.value(u"type", results::kAllEntries);

    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    if (!target.connect(Target::Use::Read))
        return Failed;
    RepairList list(target.session(), target.project(), options);
    if (!list.open())
        return Failed;
    QList<OutputColumn> columns;
    for (const RepairField &field : results::repairFields())
        columns.append({QString::fromUtf16(field.name), field.type()});
    writer->begin(columns);
    for (const int place : list.visible()) {
        QList<dao::Value> cells;
        for (const RepairField &field : results::repairFields())
            cells.append(field.value(list.repair(place)));
        writer->row(cells);
    }
    writer->end();
    return Done;
}

int runScheduleRepairs(const Arguments &arguments)
{
    arguments.atMost(1);
    if (arguments.has(u"tubes") == arguments.has(u"query"))
        throw UsageError(u"Give the tubes by --tubes or by --query."_s);
    if (arguments.value(u"type").trimmed().isEmpty())
        throw UsageError(u"--type is missing: the type of repair."_s);

    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    results::RepairOptions options;
    ConsoleProgress progress;
    RepairList list(target.session(), target.project(), options, &progress);
    Repair pattern = list.scheduleTemplate();
    setFields(pattern, arguments);
    std::optional<QList<qint32>> tubes;
    std::optional<query::QueryDocument> query;
    if (arguments.has(u"tubes"))
        tubes = readTubeList(target, arguments.value(u"tubes"));
    else
        query = readQuery(target, arguments.value(u"query"));
    if (!(tubes || query) || !target.connect())
        return Failed;
    if (query)
        tubes = runTubeQuery(target, *query);
    if (!tubes)
        return Failed;
    if (!list.open())
        return Failed;
    list.schedule(*tubes, pattern);
    const QString added = target.console().lastStatus();
    if (!list.closeWithOk())
        return Failed;
    print(added + u'\n');
    return Done;
}

int runCompleteRepairs(const Arguments &arguments)
{
    arguments.atMost(1);
    if (!arguments.has(u"tubes"))
        throw UsageError(u"--tubes is missing: the list of the tubes."_s);
    JDateTime when = JDateTime::now();
    if (arguments.has(u"date")) {
        Repair typed;
        try {
            results::setRepairField(typed, *results::findRepairField(u"date_completed"), arguments.value(u"date"));
        } catch (const tarnwick::Error &) {
            throw UsageError(
                u"--date needs a date, with a time if wanted, not \"%1\"."_s.arg(arguments.value(u"date")));
        }
        if (typed.dateCompleted.isNull())
            throw UsageError(u"--date needs a date."_s);
        when = typed.dateCompleted;
    }
    results::RepairOptions options;
    options.view = RepairView::Scheduled;
    options.repairType = arguments.value(u"type", results::kAllEntries);

    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    const QList<qint32> tubes = readTubeList(target, arguments.value(u"tubes"));
    if (!target.connect())
        return Failed;
    ConsoleProgress progress;
    RepairList list(target.session(), target.project(), options, &progress);
    if (!list.open())
        return Failed;
    const ellery::SteamGen &steamGen = target.project().steamGen;
    std::vector<bool> wanted(size_t(steamGen.numTube()));
    for (const qint32 tube : tubes)
        wanted[size_t(tube)] = true;
    std::vector<bool> found(wanted.size());
    QList<int> places;
    for (const int place : list.visible()) {
        const int tube = steamGen.findTube(list.repair(place).address());
        if (tube < 0 || !wanted[size_t(tube)])
            continue;
        places.append(place);
        found[size_t(tube)] = true;
    }
    for (const qint32 tube : tubes) {
        const ellery::TubeAddress &address = steamGen[tube].address;
        if (!found[size_t(tube)])
            printError(u"%1 has no scheduled repair\n"_s.arg(steamGen.tubeName(address)));
    }
    list.complete(places, when);
    const QString completed = target.console().lastStatus();
    if (!list.closeWithOk())
        return Failed;
    print(completed + u'\n');
    return Done;
}

} // namespace cli

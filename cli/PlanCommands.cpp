#include "CommandTable.h"
#include "NamedObjects.h"
#include "TubeFile.h"

#include <db/FieldAccess.h>
#include <fenwright/TableScanner.h>
#include <plans/storage/Messages.h>
#include <plans/storage/PlanCheck.h>
#include <plans/storage/PlanOptions.h>
#include <plans/storage/PlanStorage.h>
#include <QFileInfo>
#include <tarnwick/FileWriter.h>

namespace cli {

using namespace Qt::StringLiterals;
using brannock::InspPlan;
using brannock::PlanEntry;
using dao::DataType;

namespace {

bool hasEnding(const QString &name, QStringView ending)
{
    return name.endsWith(ending, Qt::CaseInsensitive);
}

const QList<OutputColumn> kEntryColumns{{u"entry"_s, DataType::Long},       {u"sec"_s, DataType::Integer},
                                        {u"row"_s, DataType::Integer},      {u"col"_s, DataType::Integer},
                                        {u"acquired"_s, DataType::Integer}, {u"analyzed"_s, DataType::Integer}};

/// The entry's cells. Entries are shown from 1.
QList<qint32> cellsOf(const PlanEntry &entry)
{
    return {entry.entryNum + 1, entry.sec, entry.row, entry.col, entry.acquired, entry.analyzed};
}

void printPlan(const InspPlan &plan, RowWriter &writer)
{
    writer.begin(kEntryColumns);
    for (const PlanEntry &entry : plan.entries) {
        QList<dao::Value> cells;
        for (const qint32 cell : cellsOf(entry))
            cells.append(db::toValue(cell));
        writer.row(cells);
    }
    writer.end();
}

QString csvOf(const InspPlan &plan)
{
    QStringList titles;
    for (const OutputColumn &column : kEntryColumns)
        titles.append(column.name);
    QString text = titles.join(u',') + u'\n';
    for (const PlanEntry &entry : plan.entries) {
        QStringList cells;
        for (const qint32 cell : cellsOf(entry))
            cells.append(QString::number(cell));
        text += cells.join(u',') + u'\n';
    }
    return text;
}

/// Reads a plan file; a remark is printed if missing entries could not be detected. Throws FileError.
InspPlan loadPlan(Target &target, const QString &argument)
{
    InspPlan plan;
    const QString path = target.pathOf(argument);
    plan.loadPlan(path);
    const QString file = QFileInfo(path).fileName();
    if (!plan.isCounted)
        target.prompts().showInformation(fenwright::uncountedRemark({file}));
    if (plan.name.isEmpty())
        plan.name = QFileInfo(path).completeBaseName();
    return plan;
}

/// Sets the flags of the entries that have results. Returns false after reporting the failure.
bool check(Target &target, InspPlan &plan, const Arguments &arguments)
{
    QStringList codes;
    if (arguments.has(u"incomplete")) {
        for (const QString &code : arguments.value(u"incomplete").split(u',', Qt::SkipEmptyParts))
            codes.append(code.trimmed());
    } else {
        plans::PlanOptions options;
        tarnwick::loadOptions(options, target.project().roots(), target.prompts());
        codes = options.incompleteCodes;
    }
    ConsoleProgress progress;
    return plan.entries.isEmpty() ||
           plans::checkPlan(target.session(), plan, target.project().outageName(), codes, &progress);
}

} // namespace

int runPlans(const Arguments &arguments)
{
    const QList<OutputColumn> columns{{u"name"_s, DataType::Text},        {u"entries"_s, DataType::Long},
                                      {u"acquired"_s, DataType::Long},    {u"probe"_s, DataType::Text},
                                      {u"begin_test"_s, DataType::Text},  {u"end_test"_s, DataType::Text},
                                      {u"create_time"_s, DataType::Date}, {u"description"_s, DataType::Memo}};
    return listNamed<plans::PlanStorage>(arguments, columns, [](const plans::PlanStorage::Info &info) {
        const InspPlan &plan = info.plan;
        return QList<dao::Value>{
            db::toValue(plan.name),       db::toValue(qint32(info.count)), db::toValue(qint32(info.acquired)),
            db::toValue(plan.probe),      db::toValue(plan.beginTest),     db::toValue(plan.endTest),
            db::toValue(plan.createTime), db::toValue(plan.description)};
    });
}

int runPlan(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString name = arguments.positional(1, u"NAME or FILE.pln"_s);
    const auto writer = makeRowWriter(arguments);
    if (arguments.has(u"incomplete") && !arguments.has(u"check"))
        throw UsageError(u"--incomplete goes with --check."_s);
    const QString outName = arguments.value(u"out");
    if (arguments.has(u"out") && !hasEnding(outName, u".pln") && !hasEnding(outName, u".csv"))
        throw UsageError(u"--out needs a name that ends in .pln or .csv."_s);

    Target target(folder, arguments, Target::Takes::Project);
    const QString out = outName.isEmpty() ? QString() : placeToWrite(target, outName);
    const bool isFile = hasEnding(name, u".pln") && !isStoredName(target, plans::kPlanTables, name);
    const bool isOpen = target.session().isOpen();
    if (!isOpen && (!isFile || arguments.has(u"check")) && !target.connect(Target::Use::Read))
        return Failed;
    InspPlan plan;
    if (isFile) {
        plan = loadPlan(target, name);
    } else {
        ConsoleProgress progress;
        const auto fetched = plans::PlanStorage(target.session(), &progress).fetch(name);
        if (!fetched)
            return Failed;
        plan = *fetched;
    }
    if (arguments.has(u"check") && !check(target, plan, arguments))
        return Failed;
    if (hasEnding(out, u".pln"))
        plan.storePlan(out);
    else if (!out.isEmpty())
        tarnwick::writeFileAtomically(out, csvOf(plan).toUtf8());
    if (out.isEmpty() || arguments.has(u"format"))
        printPlan(plan, *writer);
    else
        print(u"%1 entries\n"_s.arg(plan.entries.size()));
    return Done;
}

int runUploadPlan(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString folder = arguments.positional(0, u"DIR"_s);
    const QString file = arguments.positional(1, u"FILE.pln"_s);
    Target target(folder, arguments, Target::Takes::Project);
    const InspPlan plan = loadPlan(target, file);
    const QString name = arguments.value(u"name", plan.name);
    if (name.isEmpty())
        throw UsageError(u"--name is empty."_s);
    plans::PlanOptions options;
    tarnwick::loadOptions(options, target.project().roots(), target.prompts());
    if (const QString missing = options.missingFields(plan); !missing.isEmpty()) {
        target.prompts().information(plans::messages::kEnterValid, missing);
        return Failed;
    }
    if (!target.connect(Target::Use::Store))
        return Failed;
    ConsoleProgress progress;
    const bool isStored = plans::PlanStorage(target.session(), &progress).upload(plan, name);
    const QString told = target.console().lastStatus() + u'\n'; // also that the upload was cancelled
    isStored ? print(told) : printError(told);
    if (!isStored)
        return Failed;
    return Done;
}

int runDeletePlan(const Arguments &arguments)
{
    return deleteNamed<plans::PlanStorage>(arguments);
}

} // namespace cli

#include "CommandLine.h"
#include "CommandTable.h"
#include "SqlOutput.h"
#include "Target.h"
#include "TubeFile.h"

#include <cmath>
#include <results/history/HistoryList.h>

#include <QDir>
#include <QFileInfo>

namespace cli {

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::Value;
using results::DefectChoice;
using results::HistoryList;
using results::HistorySort;
using results::OutageChoice;
using results::OutageMode;

namespace {

/// The value that a word stands for. Throws UsageError for any other word.
template <typename T>
T wordOf(const Arguments &arguments, QStringView option, T whenMissing,
         std::initializer_list<std::pair<const char16_t *, T>> words)
{
    if (!arguments.has(option))
        return whenMissing;
    QStringList known;
    for (const auto &[word, value] : words) {
        if (arguments.value(option) == QStringView(word))
            return value;
        known.append(QString::fromUtf16(word));
    }
    throw UsageError(u"--%1 is one of: %2."_s.arg(option.toString(), known.join(u", "_s)));
}

/// "CODE", "CODE:volts" or "CODE:volts:pcnt".
DefectChoice parseDefect(const QString &text)
{
    const QStringList parts = text.split(u':');
    DefectChoice choice;
    choice.code = parts[0].trimmed();
    bool voltsOk = true;
    bool percentOk = true;
    if (parts.size() > 1 && !parts[1].trimmed().isEmpty())
        choice.volts = parts[1].toDouble(&voltsOk);
    if (parts.size() > 2 && !parts[2].trimmed().isEmpty())
        choice.percent = parts[2].toInt(&percentOk);
    if (choice.code.isEmpty() || parts.size() > 3 || !voltsOk || !std::isfinite(choice.volts) || !percentOk)
        throw UsageError(u"--defects needs CODE, CODE:volts or CODE:volts:pcnt, not \"%1\"."_s.arg(text));
    return choice;
}

bool isSame(const QString &left, const QString &right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

void warnMissing(const QString &what, const QStringList &names)
{
    if (!names.isEmpty())
        printError(u"warning: table report has no %1 %2\n"_s.arg(what, names.join(u", "_s)));
}

/// Marks what the options name. What no row has is told.
void setOutages(results::HistoryFilter &filter, const Arguments &arguments)
{
    if (!arguments.has(u"outages"))
        return;
    for (OutageChoice &choice : filter.outages)
        choice.keep = false;
    QStringList missing;
    for (const QString &part : arguments.value(u"outages").split(u',')) {
        const QString outage = part.trimmed();
        bool found = false;
        for (OutageChoice &choice : filter.outages) {
            if (isSame(choice.outage, outage))
                choice.keep = found = true;
        }
        if (!found)
            missing.append(outage);
    }
    warnMissing(u"outage"_s, missing);
}

void setDefects(results::HistoryFilter &filter, const QList<DefectChoice> &wanted)
{
    if (wanted.isEmpty())
        return;
    for (DefectChoice &choice : filter.defects)
        choice.keep = false;
    QStringList missing;
    for (const DefectChoice &want : wanted) {
        bool found = false;
        for (DefectChoice &choice : filter.defects) {
            if (!isSame(choice.code, want.code))
                continue;
            choice.keep = found = true;
            choice.volts = want.volts;
            choice.percent = want.percent;
        }
        if (!found)
            missing.append(want.code);
    }
    warnMissing(u"code"_s, missing);
}

Value textOrNull(const QString &text)
{
    return text.isEmpty() ? Value::null() : Value::fromText(text);
}

QList<Value> cellsOf(const HistoryList &list, int place)
{
    const brannock::HistoryEntry entry = list.entryAt(place);
    const results::HistoryRow &row = list.rowAt(place);
    const auto offset = [](const brannock::TubeLoc &where) {
        return where.isValid() ? Value::fromFloat(where.offset) : Value::null();
    };
    return {Value::fromShort(entry.sec),
            Value::fromShort(entry.row),
            Value::fromShort(entry.col),
            textOrNull(entry.outage),
            textOrNull(entry.channel),
            textOrNull(entry.defect),
            row.hasVolts ? Value::fromDouble(entry.volts) : Value::null(),
            row.hasPhase ? Value::fromDouble(entry.phase) : Value::null(),
            row.hasPercent ? Value::fromLong(entry.percent) : Value::null(),
            textOrNull(entry.location.landmark),
            offset(entry.location),
            textOrNull(entry.to.landmark),
            offset(entry.to),
            Value::fromLong(entry.calNumber),
            Value::fromLong(qint32(row.tube)),
            Value::fromLong(qint32(row.rank)),
            Value::fromBoolean(row.keep)};
}

void printEntries(const HistoryList &list, bool all, RowWriter &writer)
{
    writer.begin({{u"sec"_s, DataType::Integer},
                  {u"row"_s, DataType::Integer},
                  {u"col"_s, DataType::Integer},
                  {u"outage"_s, DataType::Text},
                  {u"chan"_s, DataType::Text},
                  {u"defect"_s, DataType::Text},
                  {u"volts"_s, DataType::Double},
                  {u"phase"_s, DataType::Double},
                  {u"pcnt"_s, DataType::Integer},
                  {u"loc_land"_s, DataType::Text},
                  {u"loc_off"_s, DataType::Single},
                  {u"to_land"_s, DataType::Text},
                  {u"to_off"_s, DataType::Single},
                  {u"cal_num"_s, DataType::Integer},
                  {u"tube"_s, DataType::Long},
                  {u"rank"_s, DataType::Long},
                  {u"keep"_s, DataType::Boolean}});
    for (int place = 0; place < list.count(); ++place) {
        if (all || list.isKept(place))
            writer.row(cellsOf(list, place));
    }
    writer.end();
}

/// A new project has no folder yet for the history that the window uses.
void makeHistoryFolder(Target &target, const QString &argument)
{
    const QString folder = QFileInfo(target.pathOf(argument)).absolutePath();
    const QString place = QFileInfo(target.project().pathOf(u"history\\palomine"_s)).absoluteFilePath();
    if (folder == place)
        QDir().mkpath(folder); // if that fails, writing the file tells it
}

} // namespace

int runHistory(const Arguments &arguments)
{
    arguments.atMost(1);
    const auto writer = makeRowWriter(arguments);
    const auto mode = wordOf<OutageMode>(
        arguments, u"mode", OutageMode::LatestSelected,
        {{u"latest", OutageMode::LatestSelected}, {u"selected", OutageMode::AllSelected}, {u"all", OutageMode::All}});
    const auto sort = wordOf<HistorySort>(arguments, u"sort", HistorySort::Fetched,
                                          {{u"tube", HistorySort::Tube},
                                           {u"column", HistorySort::Column},
                                           {u"indication", HistorySort::Indication},
                                           {u"volts", HistorySort::Volts},
                                           {u"phase", HistorySort::Phase},
                                           {u"pcnt", HistorySort::Percent}});
    QList<DefectChoice> defects;
    if (arguments.has(u"defects")) {
        for (const QString &part : arguments.value(u"defects").split(u','))
            defects.append(parseDefect(part));
    }

    if (arguments.has(u"out") && !arguments.value(u"out").endsWith(u".hst"_s, Qt::CaseInsensitive))
        throw UsageError(u"--out needs a name that ends in .hst."_s);

    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    if (arguments.has(u"out"))
        makeHistoryFolder(target, arguments.value(u"out"));
    const QString out = arguments.has(u"out") ? placeToWrite(target, arguments.value(u"out")) : QString();
    if (!target.connect(Target::Use::Read))
        return Failed;
    // What the window remembers has no influence: the options are not loaded.
    results::ArvoHistoryOptions options;
    ConsoleProgress progress;
    HistoryList list(target.session(), target.project(), options, &progress);
    if (!list.fetchFilters())
        return Failed;
    list.choices().mode = mode;
    setOutages(list.choices(), arguments);
    setDefects(list.choices(), defects);
    const tarnwick::Outcome outcome = list.fetch();
    if (outcome == tarnwick::Outcome::Cancelled)
        throw tarnwick::Cancelled();
    if (outcome == tarnwick::Outcome::Failed)
        return Failed;
    if (sort != HistorySort::Fetched)
        list.sortBy(sort);
    if (out.isEmpty() || arguments.has(u"format"))
        printEntries(list, arguments.has(u"all"), *writer);
    if (out.isEmpty())
        return Done;
    if (!list.saveAs(out))
        return Failed;
    const QString stored =
        u"%1 %2 of %3 entries.\n"_s.arg(target.console().lastStatus()).arg(list.kept()).arg(list.count());
    arguments.has(u"format") ? printError(stored) : print(stored);
    return Done;
}

} // namespace cli

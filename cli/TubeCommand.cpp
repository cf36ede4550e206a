#include "ColumnPrinter.h"
#include "CommandLine.h"
#include "CommandTable.h"
#include "RowOutput.h"

#include <query/Messages.h>
#include <query/QueryResult.h>
#include <query/TubeListing.h>
#include <tarnwick/Failures.h>

namespace cli {

using namespace Qt::StringLiterals;
using ellery::Axis;

namespace {

qint16 numberOf(const ellery::SteamGen &steamGen, Axis axis, const QString &text)
{
    const int number = steamGen.stringToNumber(axis, text);
    if (number < 0)
        throw tarnwick::Error(u"There is no %1 \"%2\"."_s.arg(steamGen.axisNames[int(axis)].toLower(), text));
    return qint16(number);
}

ellery::TubeAddress tubeOf(const ellery::SteamGen &steamGen, const Arguments &arguments)
{
    ellery::TubeAddress tube;
    tube.row = numberOf(steamGen, Axis::Row, arguments.positional(1, u"ROW"_s));
    tube.col = numberOf(steamGen, Axis::Col, arguments.positional(2, u"COL"_s));
    if (steamGen.hasSections() || arguments.positional().size() > 3)
        tube.sec = numberOf(steamGen, Axis::Sec, arguments.positional(3, u"SEC"_s));
    if (steamGen.findTube(tube) < 0)
        throw tarnwick::Error(u"There is no tube %1."_s.arg(steamGen.tubeName(tube)));
    return tube;
}

/// Prints the columns of a result as they are displayed; of the tab "Report" only those that it shows.
void printRows(const query::QueryResult &result, bool isReport)
{
    QStringList titles;
    QList<bool> rightAligned;
    QList<int> columns;
    const auto take = [&](int column) {
        columns.append(column);
        titles.append(result.column(column).title);
        rightAligned.append(result.column(column).alignment == db::ColumnFormat::Right);
    };
    if (isReport) {
        for (const QString &field : query::tubeReportFields())
            if (const int column = result.findColumn(field); column >= 0)
                take(column);
    } else {
        for (int column = 0; column < result.columnCount(); ++column)
            take(column);
    }
    ColumnPrinter printer(titles, rightAligned);
    for (qint64 row = 0; row < result.rowCount(); ++row) {
        QStringList cells;
        for (const int column : std::as_const(columns))
            cells.append(result.cellText(row, column));
        printer.row(cells);
    }
    printer.end();
    print(tarnwick::format(query::messages::kEntries.text, result.rowCount()) + u'\n');
}

/// Returns false after reporting the error.
bool printListing(Target &target, const query::TubeListing &listing, bool isReport)
{
    print(u'\n' + listing.title + u'\n');
    ConsoleProgress progress;
    query::QueryResult result(target.session(), target.queryContext());
    bool hasRun = false;
    const auto run = [&] { hasRun = result.run(listing.title, listing.sql, &progress); };
    if (!tarnwick::attempt(target.prompts(), run, query::messages::kExecute) || !hasRun)
        return false;
    printRows(result, isReport);
    return true;
}

} // namespace

int runTube(const Arguments &arguments)
{
    arguments.atMost(4);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    const ellery::SteamGen &steamGen = target.map().component();
    const ellery::TubeAddress tube = tubeOf(steamGen, arguments);
    if (!target.connect())
        return Failed;
    print(u"Tube - %1\n"_s.arg(steamGen.tubeName(tube)));
    bool done = true;
    bool isReport = true;
    for (const query::TubeListing &listing : query::tubeListings(target.options(), steamGen, tube)) {
        done = printListing(target, listing, isReport) && done;
        isReport = false;
    }
    return done ? Done : Failed;
}

} // namespace cli

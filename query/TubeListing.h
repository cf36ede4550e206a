#pragma once
#include "ArvoOptions.h"

#include <brannock/Report.h>
#include <brannock/TubeHistory.h>
#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>
#include <tarnwick/JTablePrintArg.h>

namespace query {

/// One tab of the tube dialog: what it shows of a tube.
struct TubeListing
{
    QString title; ///< "Report", or the name of a tab of the options
    QString sql;   ///< with the tube's macros expanded
};

/// The macros of a tube: "[ROW]", "[COL]", "[SEC]" are its numbers, "[ROW#]", "[COL#]", "[SEC#]" its labels in single
/// quotes.
tarnwick::JMacro tubeMacros(const ellery::SteamGen &steamGen, const ellery::TubeAddress &tube);

/// The tabs of the tube dialog in order: the report entries, then the tabs of the options.
QList<TubeListing> tubeListings(const ArvoOptions &options, const ellery::SteamGen &steamGen,
                                const ellery::TubeAddress &tube);

/// Reads the entries of the tab "Report". Without a database, or on a failure (1069), reports it and returns false.
bool readTubeReport(db::DatabaseSession &session, const QString &sql, brannock::Report &report);

/// Results of a history file as rows of cells: outage, code, volts, percent, their growth, place.
QList<QStringList> indicationRows(const QList<brannock::TubeIndication> &indications);

/// The print layout of a tab: its title and SQL stand at the top, page numbers at the bottom.
tarnwick::JTablePrintArg tubePrintLayout(const TubeListing &listing, bool isReport);

/// The fields of table 'report' that the tube dialog shows, in order.
const QStringList &tubeReportFields();

} // namespace query

#pragma once
#include "ArvoOptions.h"

#include <ellery/SteamGen.h>

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

/// The fields of table 'report' that the tube dialog shows, in order.
const QStringList &tubeReportFields();

} // namespace query

#pragma once
#include "HistoryFilter.h"

#include <db/DatabaseSession.h>

namespace results {

/// Reads every row of table 'report' as a history entry and numbers tubes and outages. Shows the number of records
/// in the status line as it goes. Throws the engine's exceptions, and Cancelled.
void fetchHistoryRows(db::DatabaseSession &session, HistoryRows &rows, tarnwick::Progress *progress);

/// The outages of table 'report', ascending, and its codes of indications with their counts. Choices that former
/// contains are taken over; new ones are kept, without thresholds. Throw the engine's exceptions.
QList<OutageChoice> fetchOutages(dao::Database &database, const QList<OutageChoice> &former);
QList<DefectChoice> fetchDefects(dao::Database &database, const QList<DefectChoice> &former);

} // namespace results

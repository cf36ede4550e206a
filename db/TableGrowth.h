#pragma once
#include <dao/Database.h>

namespace db {

/// Told of rows added to a table, within their transaction: brings the planner's statistics up to date when the table
/// grew by half since they were last made, and by enough to matter. Costs nothing to speak of otherwise. The counts are
/// kept as properties of the file. A failure is left to the commit that follows.
void noteTableGrowth(dao::Database &database, const QString &table, qint64 rowsAdded);

/// Gives every table of the schema that the planner knows nothing of (in files of older programs, or converted ones)
/// statistics: its own when it holds rows, else those that are expected of it. Does nothing to the rest, and a failure
/// changes nothing but the speed of queries.
void completeStatistics(dao::Database &database);

} // namespace db

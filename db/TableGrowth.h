#pragma once
#include <dao/Database.h>

namespace db {

/// Told of rows added to a table, within their transaction: brings the planner's statistics up to date when the table
/// grew by half since they were last made, and by enough to matter. Costs nothing to speak of otherwise. The counts are
/// kept as properties of the file. A failure is left to the commit that follows.
void noteTableGrowth(dao::Database &database, const QString &table, qint64 rowsAdded);

} // namespace db

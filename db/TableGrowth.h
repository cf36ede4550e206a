#pragma once
#include <dao/Database.h>

namespace db {

/// Call after rows were added to a table, within the same transaction. Updates the planner's statistics if the table
/// has grown by half, and by enough rows to matter, since they were last updated; otherwise costs almost nothing. The
/// counts are stored as properties of the file. Failures are ignored here; the following commit reports them.
void noteTableGrowth(dao::Database &database, const QString &table, qint64 rowsAdded);

/// Adds statistics to every schema table that has none (in converted files and files of older programs): measured if
/// the table holds rows, otherwise the expected ones. Other tables stay unchanged. A failure only affects the speed of
/// queries.
void completeStatistics(dao::Database &database);

} // namespace db

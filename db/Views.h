#pragma once
#include "DatabaseSession.h"

#include <ellery/SteamGen.h>

namespace db {

/// SQL of a table's view: all fields in order, with the plant's labels in place of the numbers of rows, columns,
/// sections and legs.
QString viewSql(const dao::TableInfo &table);

/// Returns true if refreshViews() and refreshAliases() have nothing to do. Only reads. Returns false also if this
/// cannot be determined; refreshing then reports the error.
bool areViewsCurrent(dao::Database &database);
bool areAliasesCurrent(dao::Database &database, const ellery::SteamGen &steamGen);

/// Creates or updates the views ("report#" and so on) of the tables that exist. A failure is reported (1030) and the
/// other views are still processed. If the whole file fails, returns false.
bool refreshViews(DatabaseSession &session);

/// Writes the component's labels into the alias tables that exist, where they differ. A number without a label is left
/// out; leg -1 is "NONE". A failure is reported (1029), leaves that table unchanged, and the other tables are still
/// processed. If the whole file fails, returns false.
bool refreshAliases(DatabaseSession &session, const ellery::SteamGen &steamGen);

} // namespace db

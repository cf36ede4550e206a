#pragma once
#include "DatabaseSession.h"

#include <ellery/SteamGen.h>

namespace db {

/// The SQL of the view of a table: all of its fields in order, with the plant's labels in place of the numbers of rows,
/// columns, sections and legs.
QString viewSql(const dao::TableInfo &table);

/// Whether refreshViews() and refreshAliases() have nothing to do. Only reads. False also when that cannot be found
/// out: refreshing then says why.
bool areViewsCurrent(dao::Database &database);
bool areAliasesCurrent(dao::Database &database, const ellery::SteamGen &steamGen);

/// Creates or replaces the views ("report#" and so on) of the tables that exist, where they differ from what they
/// should be. A failure is reported (1030) and does not stop the others, unless it is one of the whole file: then
/// false.
bool refreshViews(DatabaseSession &session);

/// Fills the alias tables that exist with the component's labels, where they differ: numbers without a label leave a
/// gap, and leg -1 is "NONE". A failure is reported (1029), leaves that table as it was and does not stop the others,
/// unless it is one of the whole file: then false.
bool refreshAliases(DatabaseSession &session, const ellery::SteamGen &steamGen);

} // namespace db

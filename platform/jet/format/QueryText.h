#pragma once
#include "Catalog.h"

namespace jet::format {

/// Builds the SQL text of a stored query from its rows: each clause on its own line, a semicolon at the end. Throws
/// Damage if the rows do not form a statement.
QString queryText(const QList<QueryRow> &rows);

/// Returns true if the statement is passed to another server and written in that server's dialect.
bool isPassThrough(const QList<QueryRow> &rows);

} // namespace jet::format

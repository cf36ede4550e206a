#pragma once
#include "Catalog.h"

namespace jet::format {

/// The SQL text of a stored query, put together again from its rows: clauses on lines of their own, a semicolon at the
/// end. Damage when the rows do not make a statement.
QString queryText(const QList<QueryRow> &rows);

/// Whether the statement is meant for another server, whose dialect it is written in.
bool isPassThrough(const QList<QueryRow> &rows);

} // namespace jet::format

#pragma once
#include <QList>
#include <QString>

struct sqlite3;

namespace dao::functions {

/// Registers every expression function and aggregate on a connection, with the names that the generator uses. A failing
/// function reports the error text "dao:<number>:<text>", which store translates into a DaoException.
void registerAll(sqlite3 *connection);

} // namespace dao::functions

#pragma once
#include <QList>
#include <QString>

struct sqlite3;

namespace dao::functions {

/// Registers every expression function and aggregate on a connection, under the names of which the generator knows.
/// A function that fails leaves an error text of the form "dao:<number>:<text>", which the seam turns into a
/// DaoException.
void registerAll(sqlite3 *connection);

} // namespace dao::functions

#pragma once
#include <dao/values/Schema.h>

namespace dao::store {

class Connection;

/// Makes an index of a table in the file. A user can stop it at any time, also within the program's transaction.
void makeIndex(Connection &connection, const TableInfo &table, const IndexInfo &index);

/// The same for an index that is not the table's own: its name in the file, its statement and one of its fields.
void makeIndex(Connection &connection, const QString &name, const QString &sql, const QString &field);

} // namespace dao::store

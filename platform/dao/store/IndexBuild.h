#pragma once
#include <dao/values/Schema.h>

namespace dao::store {

class Connection;

/// Creates an index. The user can cancel at any time, also inside the program's transaction.
void makeIndex(Connection &connection, const TableInfo &table, const IndexInfo &index);

/// Creates an index that is not part of the table's definition: its name in the file, its statement and one of its
/// fields.
void makeIndex(Connection &connection, const QString &name, const QString &sql, const QString &field);

} // namespace dao::store

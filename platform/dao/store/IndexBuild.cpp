#include "IndexBuild.h"

#include "Connection.h"
#include "TableDefinition.h"

#include <dao/sql/Compiler.h>

using namespace Qt::StringLiterals;

namespace dao::store {

void makeIndex(Connection &connection, const TableInfo &table, const IndexInfo &index)
{
    makeIndex(connection, indexNameInFile(table.name, index.name), createIndexSql(table, index),
              index.fields.first().name);
}

void makeIndex(Connection &connection, const QString &name, const QString &sql, const QString &field)
{
    const SmallSorts small(connection);
    if (!connection.mustPollForCancel()) {
        connection.run(sql);
        return;
    }
    // CREATE INDEX cannot be stopped without an interrupt. As a partial index whose condition calls dao_proceed() it
    // asks the engine for each row. The function returns true for every row, so the index is complete, and the stored
    // definition is then replaced by one without the condition.
    connection.run(sql + u" WHERE dao_proceed("_s + sql::quotedName(field) + u')');
    connection.rewriteIndex(name, sql);
}

} // namespace dao::store

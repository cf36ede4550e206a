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
    if (!connection.mustAskToStop()) {
        connection.run(sql);
        return;
    }
    // The inner engine makes an index in one go. As an index of those rows for which a function of ours holds it asks
    // us at every row; the function holds for all of them, so what comes out is the index that was wanted, and its
    // definition can say so.
    connection.run(sql + u" WHERE dao_proceed("_s + sql::quotedName(field) + u')');
    connection.rewriteIndex(name, sql);
}

} // namespace dao::store

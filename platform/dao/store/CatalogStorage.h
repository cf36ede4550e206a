#pragma once
#include <dao/values/Schema.h>

#include <QHash>
#include <QMap>
#include <QSet>
#include <vector>

namespace dao::store {

class Connection;

/// Names are compared without regard to case.
inline QString folded(QStringView name)
{
    return name.toString().toCaseFolded();
}

/// A table as the catalog keeps it.
struct StoredTable
{
    qint64 id = 0; ///< in order of creation
    TableInfo info;
    /// Folded names of required fields that came to rows without a value for them: those rows stay as they are, and
    /// triggers instead of NOT NULL refuse any row that is written without one.
    QSet<QString> lateRequired;
};

/// All that the system tables hold.
struct CatalogContents
{
    std::vector<StoredTable> tables; ///< in order of creation
    QList<RelationInfo> relations;
    QMap<QString, QueryInfo> queries; ///< by folded name
    QHash<QString, QString> properties;
};

CatalogContents readCatalog(Connection &connection);

/// A new table gets its id; one that has an id is replaced.
void writeTable(Connection &connection, StoredTable &table);
void removeTable(Connection &connection, const StoredTable &table);
void writeRelation(Connection &connection, const RelationInfo &relation);
void removeRelation(Connection &connection, const QString &name);
void writeQuery(Connection &connection, const QueryInfo &query);
void removeQuery(Connection &connection, const QString &name);
void writeProperty(Connection &connection, const QString &name, const QString &value);
void removeProperty(Connection &connection, const QString &name);
/// All whose names begin so.
void removeProperties(Connection &connection, const QString &beginning);

} // namespace dao::store

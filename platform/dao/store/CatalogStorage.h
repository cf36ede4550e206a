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

/// A table as stored in the catalog.
struct StoredTable
{
    qint64 id = 0; ///< in order of creation
    TableInfo info;
    /// Case-folded names of fields that became required while rows had no value in them. These rows are kept; triggers
    /// instead of NOT NULL refuse any later write without a value.
    QSet<QString> lateRequired;
};

/// The content of the system tables.
struct CatalogContents
{
    std::vector<StoredTable> tables; ///< in order of creation
    QList<RelationInfo> relations;
    QMap<QString, QueryInfo> queries; ///< by folded name
    QHash<QString, QString> properties;
};

CatalogContents readCatalog(Connection &connection);

/// Inserts a table without an id and sets its id; replaces the stored definition of a table with an id.
void writeTable(Connection &connection, StoredTable &table);
void removeTable(Connection &connection, const StoredTable &table);
void writeRelation(Connection &connection, const RelationInfo &relation);
void removeRelation(Connection &connection, const QString &name);
void writeQuery(Connection &connection, const QueryInfo &query);
void removeQuery(Connection &connection, const QString &name);
void writeProperty(Connection &connection, const QString &name, const QString &value);
void removeProperty(Connection &connection, const QString &name);
/// Removes all properties whose names start with this text.
void removeProperties(Connection &connection, const QString &beginning);

} // namespace dao::store

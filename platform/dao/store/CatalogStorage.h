#pragma once
#include "StoredTable.h"

#include <QHash>
#include <QMap>
#include <vector>

namespace dao::store {

class Connection;

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

#pragma once
#include "Catalog.h"

#include <dao/sql/plan/Compiled.h>

namespace dao::store {

class Connection;
class DefinitionCheck;

/// Changes the schema: definitions in the file and in the catalog together, each change completely or not at all.
class SchemaEditor
{
public:
    SchemaEditor(Connection &connection, Catalog &catalog)
        : m_connection(connection)
        , m_catalog(catalog)
    {
    }

    /// checks: additional conditions for every row.
    void createTable(const TableInfo &table, const QList<sql::NamedCheck> &checks = {});
    /// Creates a table without its indexes, so that it can be filled first.
    StoredTable createUnindexed(const TableInfo &table, const QSet<QString> &lateRequired);
    /// Replaces the definition of a table and copies its rows in one pass.
    void alterTable(QStringView name, const TableInfo &newShape, const QList<FieldFill> &fills);
    void deleteTable(QStringView name);
    /// Existing rows get the default value if the field is required, else Null (False in a Boolean field).
    void addField(QStringView table, const FieldInfo &field);
    /// Changes type, size or rules of the field of that name; converts its values.
    void alterField(QStringView table, const FieldInfo &field);
    void deleteField(QStringView table, QStringView field);
    /// Adds a condition for every row.
    void addCheck(QStringView table, const sql::NamedCheck &check);
    /// Returns false if the table has no condition of that name.
    bool deleteCheck(QStringView table, const QString &name);
    void createIndex(QStringView table, const IndexInfo &index);
    void deleteIndex(QStringView table, QStringView index);
    void createRelation(const RelationInfo &relation);
    void deleteRelation(QStringView name);
    void createQuery(const QueryInfo &query);
    void setQuerySql(QStringView name, const QString &sql);
    void deleteQuery(QStringView name);
    void setProperty(const QString &name, const QString &value);

    /// Runs several changes as one.
    void asOne(const std::function<void()> &changes) { m_catalog.change(changes); }

private:
    [[noreturn]] void fail(int number, const QStringList &arguments = {}) const;
    void createIndexes(const TableInfo &table);
    void nameCheck(const TableInfo &table, const sql::NamedCheck &check);
    const StoredTable &stored(QStringView name) const;
    DefinitionCheck check() const;
    /// Checks the rules of a field that was just added on one row, because its value is the same in all rows.
    void requireOneRow(const StoredTable &table, const FieldInfo &field) const;
    void requireRelations(const StoredTable &before, const TableInfo &after) const;
    void replaceTable(const StoredTable &before, StoredTable &after, const QList<FieldFill> &fills = {});
    void installRelation(const RelationInfo &relation, const TableInfo &foreignTable);
    void uninstallRelation(const RelationInfo &relation);
    bool canJustAppend(const StoredTable &table, const FieldInfo &field) const;
    bool isReferenced(const TableInfo &table, const IndexInfo &index) const;

    Connection &m_connection;
    Catalog &m_catalog;
};

} // namespace dao::store

#pragma once
#include "Catalog.h"

#include <dao/sql/Compiled.h>

namespace dao::store {

class Connection;
class DefinitionCheck;

/// Changes of the schema: the file's definitions and the catalog together, each change as a whole or not at all.
class SchemaEditor
{
public:
    SchemaEditor(Connection &connection, Catalog &catalog)
        : m_connection(connection)
        , m_catalog(catalog)
    {
    }

    /// checks: further conditions that every row must meet.
    void createTable(const TableInfo &table, const QList<sql::NamedCheck> &checks = {});
    /// A new table in the file and the catalog whose indexes are not made yet: for filling it first.
    StoredTable createUnindexed(const TableInfo &table, const QSet<QString> &lateRequired);
    /// Another definition for a table, its rows brought over in one pass.
    void alterTable(QStringView name, const TableInfo &newShape, const QList<FieldFill> &fills);
    void deleteTable(QStringView name);
    /// Rows that are there get the default value when the field is required, else Null (False in a Boolean field).
    void addField(QStringView table, const FieldInfo &field);
    /// Another type, size or rule for a field of that name; its values are converted.
    void alterField(QStringView table, const FieldInfo &field);
    void deleteField(QStringView table, QStringView field);
    /// One more condition that every row must meet.
    void addCheck(QStringView table, const sql::NamedCheck &check);
    /// False when the table has no condition of that name.
    bool deleteCheck(QStringView table, const QString &name);
    void createIndex(QStringView table, const IndexInfo &index);
    void deleteIndex(QStringView table, QStringView index);
    void createRelation(const RelationInfo &relation);
    void deleteRelation(QStringView name);
    void createQuery(const QueryInfo &query);
    void setQuerySql(QStringView name, const QString &sql);
    void deleteQuery(QStringView name);
    void setProperty(const QString &name, const QString &value);

    /// Several changes as one.
    void asOne(const std::function<void()> &changes) { m_catalog.change(changes); }

private:
    [[noreturn]] void fail(int number, const QStringList &arguments = {}) const;
    void createIndexes(const TableInfo &table);
    void nameCheck(const TableInfo &table, const sql::NamedCheck &check);
    const StoredTable &stored(QStringView name) const;
    DefinitionCheck check() const;
    /// A field that was just added: its value, the same in all rows, keeps its own rules.
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

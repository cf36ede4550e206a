#pragma once
#include "CatalogStorage.h"

#include <dao/values/Names.h>

#include <functional>

namespace dao::store {

class Connection;

/// The cached schema of one open file. Every change of the schema, by any connection, increments a version number in
/// the file, which is compared before each statement.
class Catalog : public SchemaView
{
public:
    explicit Catalog(Connection &connection)
        : m_connection(connection)
    {
    }

    /// Creates the system tables of a new file.
    void create();
    void load();
    /// Reloads the schema if another connection or a rollback has changed it. Returns true if it was reloaded.
    bool refresh();
    /// Call after a rollback: reloads the schema and installs the temporary triggers again if the rollback removed
    /// them.
    void rolledBack();
    void clear();
    /// Increases with every load. Statements compiled for an older generation must be compiled again.
    quint64 generation() const { return m_generation; }

    const TableInfo *findTable(QStringView name) const override;
    const QueryInfo *findQuery(QStringView name) const override;
    QStringList sourceNames() const override;

    const StoredTable *findStored(QStringView name) const;
    const RelationInfo *findRelation(QStringView name) const;
    const std::vector<StoredTable> &tables() const { return m_contents.tables; }
    const QList<RelationInfo> &relations() const { return m_contents.relations; }
    QStringList queryNames() const;
    QString property(const QString &name) const;

    /// Runs a schema change inside a savepoint, increments the version and reloads the schema.
    void change(const std::function<void()> &steps);
    /// The handler is called before every change, so that open readers can release the file.
    void setBeforeChange(const std::function<void()> &handler) { m_beforeChange = handler; }

private:
    Connection &m_connection;
    CatalogContents m_contents;
    QHash<NameKey, qsizetype> m_tablesByName; ///< refers to m_contents
    std::function<void()> m_beforeChange;
    qint64 m_version = -1;
    quint64 m_generation = 0;
};

} // namespace dao::store

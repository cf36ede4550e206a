#pragma once
#include "CatalogStorage.h"

#include <functional>

namespace dao::store {

class Connection;

/// The schema of one open file, cached. Every change of it, by whatever connection, moves a version in the file on,
/// which is looked at before each statement.
class Catalog : public SchemaView
{
public:
    explicit Catalog(Connection &connection)
        : m_connection(connection)
    {
    }

    /// The system tables of a new file.
    void create();
    void load();
    /// Reloads when another connection, or a roll back, has changed the schema. True when it did.
    bool refresh();
    /// After a roll back: what it took away of the schema, and of the temporary triggers, is brought back into step.
    void rolledBack();
    void clear();
    /// Moves on with every load; what was compiled against an older one must be compiled again.
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

    /// Runs a change of the schema as a whole or not at all, moves the version on and loads what came out.
    void change(const std::function<void()> &steps);
    /// Called before every change: whoever reads from the file lets go of it.
    void setBeforeChange(const std::function<void()> &handler) { m_beforeChange = handler; }

private:
    Connection &m_connection;
    CatalogContents m_contents;
    QHash<QString, qsizetype> m_tablesByName;
    std::function<void()> m_beforeChange;
    qint64 m_version = -1;
    quint64 m_generation = 0;
};

} // namespace dao::store

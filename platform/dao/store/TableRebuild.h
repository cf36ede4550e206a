#pragma once
#include "CatalogStorage.h"
#include "TableDefinition.h"

namespace dao::store {

class Connection;

/// Creates a table with a new definition, copies the rows and replaces the old table, the procedure that SQLite
/// documents for changes that ALTER TABLE cannot do. Call inside a savepoint, with the triggers of its relations
/// removed. Row keys, the autonumber sequence and the planner's statistics are kept.
class TableRebuild
{
public:
    /// after: fields are matched by name; new ones get their default if they are required, else Null. Its lateRequired
    /// is updated. Only the rules of new or changed fields are checked: a row that breaks another rule, as imported
    /// rows can, is kept.
    TableRebuild(Connection &connection, const StoredTable &before, StoredTable &after);
    /// The fields named in fills get the values of their expressions, converted as in an assignment.
    void fillWith(const QList<FieldFill> &fills) { m_fills = fills; }
    void run();

private:
    void findLateRequired();
    bool hasNull(const QString &sourceColumn) const;
    QString sourceOf(const FieldInfo &field) const;
    bool needsConversion(const FieldInfo &field) const;
    void copyRows();
    void copyConverted(const QString &select, const QString &insert);
    void copyFilled();
    bool isFilled(const FieldInfo &field) const;
    void checkChangedFields();
    void verify(const ColumnCheck &check);
    void keepSequence();

    Connection &m_connection;
    const StoredTable &m_before;
    StoredTable &m_after;
    QList<FieldFill> m_fills;
};

} // namespace dao::store

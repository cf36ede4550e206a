#pragma once
#include "CatalogStorage.h"
#include "TableDefinition.h"

namespace dao::store {

class Connection;

/// Makes a table anew with another definition and brings its rows over. Call inside a savepoint, with the relations of
/// the table taken off. Rows keep their keys; the autonumber keeps its place, and the planner its statistics.
class TableRebuild
{
public:
    /// after: fields match those of before by name; new ones get their default when they are required, else Null. Its
    /// lateRequired is brought up to date. Rows are checked for the rules of fields that are new or changed only: one
    /// that breaks another rule, as rows from elsewhere may, stays as it is.
    TableRebuild(Connection &connection, const StoredTable &before, StoredTable &after);
    /// The fields named by fills get the values of their expressions, converted as an assignment does.
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

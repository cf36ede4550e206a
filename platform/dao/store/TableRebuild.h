#pragma once
#include "CatalogStorage.h"

namespace dao::store {

class Connection;

/// Makes a table anew with another definition and brings its rows over. Call inside a savepoint, with the relations of
/// the table taken off. Rows keep their keys; the autonumber keeps its place, and the planner its statistics.
class TableRebuild
{
public:
    /// after: fields match those of before by name; new ones get their default when they are required, else Null. Its
    /// lateRequired is brought up to date.
    TableRebuild(Connection &connection, const StoredTable &before, StoredTable &after);
    void run();

private:
    void findLateRequired();
    bool hasNull(const QString &sourceColumn) const;
    QString sourceOf(const FieldInfo &field) const;
    bool needsConversion(const FieldInfo &field) const;
    void copyRows();
    void copyConverted(const QString &select, const QString &insert);
    void keepSequence();

    Connection &m_connection;
    const StoredTable &m_before;
    StoredTable &m_after;
};

} // namespace dao::store

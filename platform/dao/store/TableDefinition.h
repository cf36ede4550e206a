#pragma once
#include "StoredTable.h"

namespace dao::store {

/// Translates definitions of the catalog to SQLite DDL. Type, size, zero length and validation rules become named CHECK
/// constraints of plain SQLite, so that every program that writes to the file must follow them.

/// The name of the row key (rowid, oid or _rowid_) that no field hides; empty if fields hide all three.
QString keyColumnFor(const TableInfo &table);

/// True if a column must not be Null: it is required, or an index refuses Null.
bool isNotNull(const StoredTable &table, const FieldInfo &field);

/// A CHECK constraint of a column: its name in the file and its condition.
struct ColumnCheck
{
    QString name;
    QString condition;
    bool operator==(const ColumnCheck &) const = default;
};
QList<ColumnCheck> columnChecks(const StoredTable &table, const FieldInfo &field);

/// The definition of one column with its constraints.
QString columnSql(const StoredTable &table, const FieldInfo &field);
/// physicalName: the name of the created table; its constraints always contain the table's final name.
QString createTableSql(const StoredTable &table, const QString &physicalName);

/// The condition of the table's validation rule; empty if there is none or if it needs functions of this engine.
QString tableRuleCondition(const TableInfo &table);

/// The name of the index in the file: SQLite has one name space for the indexes of all tables.
QString indexNameInFile(const QString &table, const QString &index);
/// False for a unique index on the autonumber alone, because that field is the row key.
bool isKeptAsIndex(const TableInfo &table, const IndexInfo &index);
QString createIndexSql(const TableInfo &table, const IndexInfo &index);

/// Triggers that replace NOT NULL for the lateRequired fields.
QStringList lateRequiredTriggers(const StoredTable &table);

/// The default value as SQLite SQL if it is a constant; empty if there is none or if it must be computed.
QString constantDefault(const FieldInfo &field);

/// A text as an SQLite literal.
QString literal(const QString &text);

} // namespace dao::store

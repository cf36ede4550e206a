#pragma once
#include "CatalogStorage.h"

namespace dao::store {

/// Definitions of the catalog as definitions of the inner engine. Type, size, zero length and validation rules become
/// named CHECK constraints of plain SQLite, so that the file refuses what the schema refuses whoever writes to it.

/// The name of the row key, chosen so that no field hides it; empty when fields hide every one.
QString keyColumnFor(const TableInfo &table);

/// True when a column holds no Null: its own rule, or an index that admits none.
bool isNotNull(const StoredTable &table, const FieldInfo &field);

/// A CHECK constraint of a column: its name in the file and its condition.
struct ColumnCheck
{
    QString name;
    QString condition;
    bool operator==(const ColumnCheck &) const = default;
};
QList<ColumnCheck> columnChecks(const StoredTable &table, const FieldInfo &field);

/// One column with its constraints.
QString columnSql(const StoredTable &table, const FieldInfo &field);
/// physicalName: the name under which the table is made; its constraints always carry the table's own.
QString createTableSql(const StoredTable &table, const QString &physicalName);

/// The condition of the table's own validation rule; empty without one, and for one that needs the engine.
QString tableRuleCondition(const TableInfo &table);

/// The index's name in the file, where names of indexes are of one space.
QString indexNameInFile(const QString &table, const QString &index);
/// False for a unique index on the autonumber alone, which is the row key itself.
bool isKeptAsIndex(const TableInfo &table, const IndexInfo &index);
QString createIndexSql(const TableInfo &table, const IndexInfo &index);

/// Triggers that stand in for NOT NULL on lateRequired fields.
QStringList lateRequiredTriggers(const StoredTable &table);
QStringList lateRequiredTriggerNames(const StoredTable &table);

/// The default value as inner SQL when it is a constant; empty when there is none or it must be computed.
QString constantDefault(const FieldInfo &field);

/// A text as inner SQL literal.
QString literal(const QString &text);

} // namespace dao::store

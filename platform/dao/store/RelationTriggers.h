#pragma once
#include <dao/values/Schema.h>

#include <QStringList>

namespace dao::store {

/// The triggers that enforce a relation: a related row is required, and changes of a key are refused or cascaded.
/// Triggers instead of foreign keys, because relations can be added and removed without rebuilding the table, and
/// because every SQLite tool runs triggers, while foreign keys must be switched on.
QStringList relationTriggers(const RelationInfo &relation);
QStringList relationTriggerNames(const RelationInfo &relation);

/// The index of the foreign table that cascades use to find their rows; it belongs to the relation.
QString relationIndexName(const RelationInfo &relation);
QString relationIndexSql(const RelationInfo &relation);

/// A query that returns a row if the foreign table has rows without a related row.
QString relationViolationSql(const RelationInfo &relation);

} // namespace dao::store

#pragma once
#include <dao/values/Schema.h>

#include <QStringList>

namespace dao::store {

/// A relation as triggers of the file: a related row is required, and changes of a key are refused or passed on.
/// Triggers rather than foreign keys, since relations come and go while the tables stay, and since every tool obeys
/// them unasked.
QStringList relationTriggers(const RelationInfo &relation);
QStringList relationTriggerNames(const RelationInfo &relation);

/// The index of the foreign table by which cascades find their rows, kept for the relation alone.
QString relationIndexName(const RelationInfo &relation);
QString relationIndexSql(const RelationInfo &relation);

/// Rows of the foreign table without their related row, as a query that returns one when there is any.
QString relationViolationSql(const RelationInfo &relation);

} // namespace dao::store

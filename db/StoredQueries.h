#pragma once
#include <dao/Database.h>

namespace db {

/// Stores a query under a name: replaces the SQL of the one that has it, or makes a new one.
void storeQueryDef(dao::Database &database, const QString &name, const QString &sql);

/// Names that end with "#" are views made by the program: never listed among a user's queries, never overwritten.
bool isViewName(QStringView name);

/// The stored queries a user sees, in the database's order: no views, none of the hidden ones whose names begin with
/// "~".
QStringList storedQueryNames(const dao::Database &database);

} // namespace db

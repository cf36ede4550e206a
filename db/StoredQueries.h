#pragma once
#include <dao/Database.h>

namespace db {

/// Stores a query under a name. Replaces the SQL of an existing query of that name.
void storeQueryDef(dao::Database &database, const QString &name, const QString &sql);

/// Names that end with "#" are views made by the program. They are never listed among a user's queries and never
/// overwritten.
bool isViewName(QStringView name);

/// The stored queries shown to a user, in the order of the database: without views and without hidden queries, whose
/// names begin with "~".
QStringList storedQueryNames(const dao::Database &database);

} // namespace db

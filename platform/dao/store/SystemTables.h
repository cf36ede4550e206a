#pragma once
#include <dao/values/Schema.h>

#include <QList>

namespace dao::store {

/// Tables with this prefix store what SQLite's schema cannot: declared types, sizes, rules, stored queries, relations
/// and properties. They are ordinary tables, so that any tool can read them.
inline constexpr char kSystemTablePrefix[] = "_dao_";

/// PRAGMA application_id of files of this engine ("DAO1").
inline constexpr qint64 kApplicationId = 0x44414F31;
/// Increased when an older engine could no longer read the file.
inline constexpr int kFileLayoutVersion = 1;

bool isSystemTableName(QStringView name);

/// Definitions of the system tables, as listed with the user's tables.
const QList<TableInfo> &systemTables();

/// The statements that create the system tables in a new file.
QStringList systemTablesSql();

} // namespace dao::store

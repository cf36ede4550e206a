#pragma once
#include <dao/values/Schema.h>

#include <QList>

namespace dao::store {

class Connection;

/// Tables of this prefix keep what the inner engine cannot: declared types, sizes, rules, stored queries, relations and
/// properties. They are ordinary tables of the file, so that any tool can read them.
inline constexpr char systemTablePrefixLatin1[] = "_dao_";

/// Marks a file as one of this engine.
inline constexpr qint64 applicationId = 0x44414F31;
/// Grows when an older engine could no longer read the file.
inline constexpr int fileLayoutVersion = 1;

bool isSystemTableName(QStringView name);

/// As they are listed beside the tables of users.
const QList<TableInfo> &systemTables();

void createSystemTables(Connection &connection);

} // namespace dao::store

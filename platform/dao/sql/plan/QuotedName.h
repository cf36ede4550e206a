#pragma once
#include <QString>

namespace dao::sql {

/// A name quoted for SQLite.
QString quotedName(QStringView name);
/// source."name"
QString qualifiedName(QStringView source, QStringView name);

} // namespace dao::sql

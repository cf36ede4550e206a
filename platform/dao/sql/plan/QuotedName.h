#pragma once
#include <QString>

namespace dao::sql {

/// A name quoted for SQLite.
QString quotedName(QStringView name);

} // namespace dao::sql

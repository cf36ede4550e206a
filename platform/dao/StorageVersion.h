#pragma once
#include <QString>

namespace dao {

/// Version of the SQLite that this process uses.
QString sqliteVersion();

} // namespace dao

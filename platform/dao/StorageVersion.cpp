#include "StorageVersion.h"

#include <sqlite3.h>

namespace dao {

QString sqliteVersion()
{
    return QString::fromLatin1(sqlite3_libversion());
}

} // namespace dao

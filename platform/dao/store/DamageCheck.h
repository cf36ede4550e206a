#pragma once
#include "Connection.h"

#include <dao/values/Damage.h>

namespace dao::store {

/// Implements Database::check(). The texts do not contain SQLite's wording.
QList<DamageFinding> findDamage(Connection &connection, bool withIndexes);

} // namespace dao::store

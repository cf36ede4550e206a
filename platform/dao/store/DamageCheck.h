#pragma once
#include "Connection.h"

#include <dao/values/Damage.h>

namespace dao::store {

/// See Database::check(). The inner engine's own words are not in the texts.
QList<DamageFinding> lookForDamage(Connection &connection, bool withIndexes);

} // namespace dao::store

#pragma once
#include "DataType.h"

namespace dao {

/// Bytes of a value, characters of a Text field (255 when none are declared), 0 for types without a size.
int sizeOf(DataType type, int declaredSize = 0);

} // namespace dao

#pragma once
#include "DataType.h"

namespace dao {

/// The size in bytes; for Text the number of characters (255 if not declared); 0 for types without a size.
int sizeOf(DataType type, int declaredSize = 0);

} // namespace dao

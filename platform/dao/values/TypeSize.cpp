#include "TypeSize.h"

namespace dao {

int sizeOf(DataType type, int declaredSize)
{
    constexpr int kDefaultLength = 255;
    switch (type) {
    case DataType::Boolean:
    case DataType::Byte:
        return 1;
    case DataType::Integer:
        return 2;
    case DataType::Long:
    case DataType::Single:
        return 4;
    case DataType::Currency:
    case DataType::Double:
    case DataType::Date:
    case DataType::Decimal:
        return 8;
    case DataType::Guid:
        return 16;
    case DataType::Text:
    case DataType::Binary:
        return declaredSize > 0 ? declaredSize : kDefaultLength;
    default:
        return 0;
    }
}

} // namespace dao

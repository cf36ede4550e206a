#include "Call.h"

namespace dao::functions {

std::span<const Entry> formatEntries()
{
    return {};
}

} // namespace dao::functions

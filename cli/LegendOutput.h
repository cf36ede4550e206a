#pragma once
#include <plans/MapLegend.h>

namespace cli {

/// Prints one line an entry: symbol, type, description, tubes, hits.
void printLegend(const plans::MapLegend &legend);

} // namespace cli

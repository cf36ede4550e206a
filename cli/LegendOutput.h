#pragma once
#include <plans/MapLegend.h>

namespace cli {

/// Prints one line per entry: symbol, type, description, tubes, hits.
void printLegend(const plans::MapLegend &legend);

} // namespace cli

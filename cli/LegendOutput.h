#pragma once
#include <map/MapDocument.h>

namespace cli {

/// Prints one line per entry: symbol, type, description, tubes, hits.
void printLegend(const map::MapDocument &document);

} // namespace cli

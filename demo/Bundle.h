#pragma once
#include "DemoOptions.h"

#include <ellery/SteamGen.h>

namespace demo {

/// Generates the tube bundle of the options: tubes, stay rods, pitch, sections and names, without landmarks.
///
/// Recirculating: semicircular. Rows begin at the divider lane (row 1 has the tightest bend), columns run along it, and
/// the two halves mirror each other. Once-through: circular, with rows from the top down; columns are counted in each
/// row from the left, per sector if there are sections. Positions of stay rods are left out in a regular pattern.
ellery::SteamGen makeBundle(const DemoOptions &options);

/// Adds the landmarks: tube ends, tubesheet faces, support plates, and bars in the bend for the rows that have them.
void addLandmarks(ellery::SteamGen &gen, Kind kind);

/// Lowest row whose bend is supported by bars.
int firstRowWithBars(const ellery::SteamGen &gen);

} // namespace demo

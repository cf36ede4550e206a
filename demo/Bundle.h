#pragma once
#include "DemoProject.h"

#include <ellery/SteamGen.h>

namespace demo {

/// The tube bundle of the options: tubes, stay rods, pitch, sections and names, without landmarks.
///
/// Recirculating: half-round; rows stack away from the divider lane (row 1 has the tightest bend), columns along it;
/// the two halves mirror each other. Once-through: round, rows from the top down, columns counted in each row from the
/// left, by sector where there are sections. Places of stay rods are left out in a regular pattern.
ellery::SteamGen makeBundle(const DemoOptions &options);

/// Adds the landmarks: tube ends, tubesheet faces, support plates, and bars in the bend for the rows that have them.
void addLandmarks(ellery::SteamGen &gen, Kind kind);

/// Lowest row whose bend is held by bars.
int firstRowWithBars(const ellery::SteamGen &gen);

} // namespace demo

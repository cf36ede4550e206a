#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

#include <brannock/InspPlan.h>

namespace map {

/// Adds three entries to the legend, as one change: the tubes of the plan that are still to be done, those that are
/// acquired or analyzed, and those that are analyzed. Entries without tubes are added, too.
void showPlan(MapDocument &document, const FillRunner &runner, const brannock::InspPlan &plan);

} // namespace map

#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

#include <brannock/InspPlan.h>

namespace map {

/// Adds three entries to the legend, as one change: the tubes of the plan that are still to be done, those that are
/// acquired or analyzed, and those that are analyzed. Entries without tubes are added, too.
///
/// outage: that of the flags "analyzed", if it is not the present one. What is acquired belongs to the plan, so there
/// are only two entries then: the tubes without and with results in that outage.
void showPlan(MapDocument &document, const FillRunner &runner, const brannock::InspPlan &plan,
              const QString &outage = {});

} // namespace map

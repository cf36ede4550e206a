#pragma once
#include "Target.h"

namespace cli {

/// The machine path of a file of the project that an argument names: as it stands, else below the project's folder. One
/// that is in neither place is below the project's when it is written with backslashes or only there is its folder.
QString mapPath(Target &target, const QString &argument);
/// Opens the map file in the target's legend. False when it cannot, which has been said.
bool openMap(Target &target, const QString &argument);
/// One line an entry: symbol, type, description, tubes, hits.
void printLegend(const plans::MapLegend &legend);

} // namespace cli

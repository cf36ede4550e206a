#pragma once
#include <brannock/paint/LegendTable.h>
#include <map/MapDocument.h>

namespace plans {

/// A legend entry and the whole legend for pictures.
brannock::LegendRow legendRow(const MapFill &fill, int hits);
QList<brannock::LegendRow> legendRows(const map::MapDocument &document);

} // namespace plans

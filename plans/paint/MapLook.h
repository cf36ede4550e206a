#pragma once
#include <brannock/paint/LegendTable.h>
#include <map/MapDocument.h>
#include <query/ArvoOptions.h>

namespace plans {

/// The part of the program's options that the map is painted by. Tick sizes are held within what can be read.
brannock::MapOptions mapOptions(const query::ArvoOptions &options);

/// A legend entry, and the whole legend, as pictures show them.
brannock::LegendRow legendRow(const MapFill &fill, int hits);
QList<brannock::LegendRow> legendRows(const map::MapDocument &document);

} // namespace plans

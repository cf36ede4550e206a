#pragma once
#include "MapFill.h"

#include <brannock/MapPalette.h>

namespace query {
struct QueryDocument;
}

namespace plans {

class QueryFill;

/// OK in a fill's dialog for a new fill: takes the undo checkpoint, labels and computes a copy of the working fill,
/// adds it and redraws the map. autoSymbol: the entry takes the next letter in place of its own symbol.
void addNewFill(MapHost &host, const MapFill &working, bool autoSymbol = true);
/// OK in a fill's dialog for an entry of the legend: takes the checkpoint, and lets the entry become the working fill,
/// computed again.
void changeFill(MapHost &host, int entry, const MapFill &working);
/// The same for a query that has been mapped already: it is not run again, and takes the symbol that the query had
/// last, where there is one, in place of an automatic letter.
void addNewQueryFill(MapHost &host, const QueryFill &mapped);
/// Runs a query, maps its result and adds the fill, as OK in the dialog after "EXECUTE" does, in a colour that tells it
/// from the entries before it. False, which has been said, when it could not be run or mapped, or the user chose not to
/// show its valid tubes.
bool addFillOfQuery(MapHost &host, const query::QueryDocument &query);
using brannock::paletteColour; // for the entry at a place of the legend

} // namespace plans

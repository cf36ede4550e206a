#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

#include <brannock/MapPalette.h>

namespace query {
struct QueryDocument;
}

namespace map {

/// OK in a fill's dialog for a new fill: adds a copy of the working fill, labelled and computed. autoSymbol: the entry
/// takes the next letter in place of its own symbol.
void addNewFill(MapDocument &document, const FillRunner &runner, const plans::MapFill &working, bool autoSymbol = true);
/// OK in a fill's dialog for an entry: the entry becomes the working fill, computed again. Nothing changes when
/// computing throws.
void changeFill(MapDocument &document, const FillRunner &runner, int place, const plans::MapFill &working);
/// The same as addNewFill() for a query that has been mapped already: it is not run again, and takes the symbol that
/// the query had last, where there is one, in place of an automatic letter.
void addNewQueryFill(MapDocument &document, const FillRunner &runner, const plans::QueryFill &mapped);
/// Runs a query, maps its result and adds the fill, in a colour that tells it from the entries before it. False, after
/// reporting why, when it could not be run or mapped, or the user chose not to show its valid tubes.
bool addFillOfQuery(MapDocument &document, const FillRunner &runner, const query::QueryDocument &query);
using brannock::paletteColour; // for the entry at a place of the legend

} // namespace map

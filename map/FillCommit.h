#pragma once
#include "FillRunner.h"
#include "MapDocument.h"

#include <brannock/MapPalette.h>

namespace query {
struct QueryDocument;
class QueryResult;
} // namespace query

namespace map {

/// Adds a copy of the working fill with its label and computed tubes: OK in the dialog of a new fill. autoSymbol: the
/// entry gets the next letter instead of the fill's own symbol.
void addNewFill(MapDocument &document, const FillRunner &runner, const plans::MapFill &working, bool autoSymbol = true);
/// Replaces an entry by a copy of the working fill and computes it: OK in the dialog of an entry. If computing throws,
/// the map is unchanged.
void changeFill(MapDocument &document, const FillRunner &runner, int place, const plans::MapFill &working);
/// As addNewFill(), for a query that has been mapped already. The query is not run again. If the query has a remembered
/// symbol, the entry gets it instead of the next letter.
void addNewQueryFill(MapDocument &document, const FillRunner &runner, const plans::QueryFill &mapped);
/// Runs a query, maps its result and adds the fill, in a colour that differs from those of the entries before it.
/// Returns false after reporting the reason if the query could not be run or mapped, or if the user chose not to show
/// its valid tubes.
bool addFillOfQuery(MapDocument &document, const FillRunner &runner, const query::QueryDocument &query);
/// OK in the dialog of a query fill, or "Mark on map" of a result: maps the result as it is shown, without running the
/// query again. place: of the entry that is changed; -1 adds one. isEdited: the text of the query was changed since the
/// result was found; a changed entry is then computed by the new text. Returns false after reporting the reason if
/// nothing was executed, columns are missing, or the user wants to see the records without a tube, which the result
/// then highlights.
bool commitQueryFill(MapDocument &document, const FillRunner &runner, int place, const query::QueryDocument &query,
                     query::QueryResult &result, bool isEdited = false);
using brannock::paletteColour; // colour of the entry at a place of the legend

} // namespace map

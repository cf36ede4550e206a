#include "FillCommit.h"

#include "MapLegend.h"
#include "QueryFill.h"
#include "QuerySource.h"

namespace plans {

void addNewFill(MapHost &host, const MapFill &working, bool autoSymbol)
{
    host.undoCheckpoint(working.undoLabel());
    auto fill = working.clone();
    fill->label = fill->entryLabel();
    fill->compute(host);
    host.legend().addEntry(std::move(fill), autoSymbol);
    host.redrawMap();
}

void changeFill(MapHost &host, int entry, const MapFill &working)
{
    host.undoCheckpoint(working.undoLabel());
    host.legend().replaceEntry(entry, working, host);
    host.refreshLegend();
    host.redrawMap();
}

void addNewQueryFill(MapHost &host, const QueryFill &mapped)
{
    host.undoCheckpoint(mapped.undoLabel());
    auto fill = mapped.clone();
    fill->label = fill->entryLabel();
    const auto mark = host.queries().rememberedMark(mapped.parameters.query.name);
    if (mark) {
        fill->symbol = mark->symbol;
        fill->colour = mark->colour;
    }
    host.legend().addEntry(std::move(fill), !mark);
    host.redrawMap();
}

bool addFillOfQuery(MapHost &host, const query::QueryDocument &query)
{
    QueryFill fill;
    fill.parameters.query = query;
    fill.colour = paletteColour(host.legend().count());
    const auto records = host.queries().run(query.name, query.sql);
    if (!records)
        return false;
    const auto answer = fill.mapResult(host, *records);
    if (!answer || answer == tarnwick::Answer::No || answer == tarnwick::Answer::Cancel)
        return false;
    addNewQueryFill(host, fill);
    return true;
}

} // namespace plans

#include "FillCommit.h"

#include "MapLegend.h"
#include "QueryFill.h"
#include "QuerySource.h"

#include <array>

namespace plans {

void addNewFill(MapHost &host, const MapFill &working)
{
    host.undoCheckpoint(working.undoLabel());
    auto fill = working.clone();
    fill->label = fill->entryLabel();
    fill->compute(host);
    host.legend().addEntry(std::move(fill), true);
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

quint32 paletteColour(int entry)
{
    static constexpr std::array<quint32, 8> colours{0x0000FF, 0xB27200, 0x009FE6, 0x739E00,
                                                    0xA779CC, 0xE9B456, 0x42E4F0, 0x404040};
    return colours[size_t(entry) % colours.size()];
}

bool addFillOfQuery(MapHost &host, const query::QueryDocument &query)
{
    QueryFill fill;
    fill.parameters.query = query;
    fill.colour = paletteColour(host.legend().count());
    const auto records = host.queries().run(query.name, query.sql);
    if (!records)
        return false;
    const tarnwick::Answer answer = fill.mapResult(host, *records);
    if (answer == tarnwick::Answer::No || answer == tarnwick::Answer::Cancel)
        return false;
    addNewQueryFill(host, fill);
    return true;
}

} // namespace plans

#include "MapLook.h"

#include <query/ArvoOptionsEdit.h>

#include <algorithm>

namespace plans {

namespace {

int tickSize(int points)
{
    return std::clamp(points, query::ArvoOptionsEdit::kSmallestTick, query::ArvoOptionsEdit::kLargestTick);
}

} // namespace

brannock::MapOptions mapOptions(const query::ArvoOptions &options)
{
    brannock::MapOptions map;
    map.mapColour = options.mapColour;
    map.fillColour = options.fillColour;
    map.tickColour = options.tickColour;
    map.selectColour = options.selectColour;
    map.watermarkColour = options.watermarkColour;
    map.displayTickSize = tickSize(options.displayTickSize);
    map.printTickSize = tickSize(options.printTickSize);
    return map;
}

brannock::LegendRow legendRow(const MapFill &fill, int hits)
{
    brannock::LegendRow row;
    row.mark = fill.mark;
    row.type = fill.typeName();
    row.description = fill.label;
    row.tubes = fill.fillCount;
    row.hits = hits;
    row.shown = fill.shown;
    return row;
}

QList<brannock::LegendRow> legendRows(const map::MapDocument &document)
{
    QList<brannock::LegendRow> rows;
    for (int i = 0; i < document.count(); ++i)
        rows.append(legendRow(document.entry(i), document.hits(i)));
    return rows;
}

} // namespace plans

#include "LegendRows.h"

namespace plans {

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

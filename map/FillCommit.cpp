#include "FillCommit.h"

#include "FillPreview.h"

#include <plans/QueryFill.h>

namespace map {

void addNewFill(MapDocument &document, const FillRunner &runner, const plans::MapFill &working, bool autoSymbol)
{
    auto fill = working.clone();
    fill->label = fill->entryLabel();
    runner.compute(*fill, document.component(), document.tubes());
    document.change(working.undoLabel(), [&](MapEdit &edit) { edit.addEntry(std::move(fill), autoSymbol); });
}

void changeFill(MapDocument &document, const FillRunner &runner, int place, const plans::MapFill &working)
{
    auto fill = working.clone();
    fill->label = fill->entryLabel();
    runner.compute(*fill, document.component(), tubesWithout(document, place));
    document.change(working.undoLabel(), [&](MapEdit &edit) { edit.replaceEntry(place, std::move(fill)); });
}

void addNewQueryFill(MapDocument &document, const FillRunner &runner, const plans::QueryFill &mapped)
{
    auto fill = mapped.clone();
    fill->label = fill->entryLabel();
    const auto remembered = runner.queries().rememberedMark(mapped.queryName());
    if (remembered)
        fill->mark = *remembered;
    document.change(mapped.undoLabel(), [&](MapEdit &edit) { edit.addEntry(std::move(fill), !remembered); });
}

bool addFillOfQuery(MapDocument &document, const FillRunner &runner, const query::QueryDocument &query)
{
    using tarnwick::Answer;
    plans::QueryFill fill;
    fill.parameters.query = query;
    fill.mark.colour = paletteColour(document.count());
    const auto records = runner.queries().run(query.name, query.sql);
    if (!records)
        return false;
    const auto answer = runner.takeRecords(fill, *records, document.component());
    if (!answer || answer == Answer::No || answer == Answer::Cancel)
        return false;
    addNewQueryFill(document, runner, fill);
    return true;
}

} // namespace map

#include "FillCommit.h"

#include "FillPreview.h"
#include "Messages.h"

#include <plans/Messages.h>
#include <plans/ProjectQueries.h>
#include <plans/QueryFill.h>
#include <query/QueryResult.h>

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

bool commitQueryFill(MapDocument &document, const FillRunner &runner, int place, const query::QueryDocument &query,
                     query::QueryResult &result, bool isEdited)
{
    using tarnwick::Answer;
    if (result.elapsed() < 0) {
        runner.prompts().error(plans::messages::kQueryNotExecuted);
        return false;
    }
    const bool isNew = place < 0;
    plans::QueryFill fill;
    if (isNew)
        fill.mark.colour = paletteColour(document.count());
    else
        fill = static_cast<const plans::QueryFill &>(document.entry(place));
    fill.parameters.query = query;
    const auto answer = runner.takeRecords(fill, *plans::recordsOf(result), document.component());
    if (!answer || answer == Answer::No || answer == Answer::Cancel)
        return false;
    if (isNew) {
        addNewQueryFill(document, runner, fill);
    } else if (isEdited) {
        changeFill(document, runner, place, fill);
        fill.fillCount = document.entry(place).fillCount;
    } else {
        fill.label = fill.entryLabel();
        document.change(fill.undoLabel(), [&](MapEdit &edit) { edit.replaceEntry(place, fill.clone()); });
    }
    runner.prompts().status(isNew && isEdited ? messages::kFillOfFormerText : messages::kFillDone, fill.entryLabel(),
                            fill.fillCount);
    return true;
}

} // namespace map

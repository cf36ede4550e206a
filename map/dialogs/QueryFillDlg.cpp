#include "QueryFillDlg.h"

#include <map/FillCommit.h>
#include <plans/QueryFill.h>
#include <query/dialogs/JQueryWin.h>
#include <query/dialogs/QueryPage.h>

namespace map {

query::SQLDlg::Setup QueryFillDlg::editorSetup(db::DatabaseSession &session, query::QueryContext &context,
                                               const ellery::SteamGen &steamGen, tarnwick::FileChoice &files,
                                               QWidget *parent)
{
    return {.editor = {.session = session,
                       .context = context,
                       .steamGen = steamGen,
                       .files = files,
                       .optionsName = QStringLiteral("query_fill"),
                       .hasTransaction = false},
            .mode = query::TableMode::Read,
            .isFull = true,
            .parent = parent};
}

/// The settings for an entry: its query is shown.
static query::SQLDlg::Setup setupFor(const FillEditorContext &context, int place, query::SQLDlg::Setup setup)
{
    if (place >= 0)
        setup.document = static_cast<const plans::QueryFill &>(context.document.entry(place)).parameters.query;
    return setup;
}

QueryFillDlg::QueryFillDlg(const FillEditorContext &context, int place, const query::SQLDlg::Setup &setup)
    : SQLDlg(setupFor(context, place, setup))
    , m_context(context)
    , m_place(place)
{
}

bool QueryFillDlg::store()
{
    query::QueryResult &result = editor().result();
    if (result.isPaused())
        return false;
    // Without a result this fails before anything is asked.
    if (result.elapsed() >= 0 && !SQLDlg::store())
        return false;
    const bool isDone = commitQueryFill(m_context.document, m_context.runner, m_place, editor().currentDocument(),
                                        result, editor().isEditedSinceRun());
    page().table().grid().noteAllChanged(); // records without a tube are highlighted
    return isDone;
}

} // namespace map

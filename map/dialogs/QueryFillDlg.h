#pragma once
#include <map/FillEditor.h>
#include <query/dialogs/SQLDlg.h>

namespace map {

/// Dialog of a query fill: the SQL editor, whose OK makes an entry of the result that it shows, or changes the entry.
class QueryFillDlg : public query::SQLDlg
{
    Q_OBJECT
public:
    /// The settings of the editor for query fills: with its own options, without a transaction.
    static query::SQLDlg::Setup editorSetup(db::DatabaseSession &session, query::QueryContext &context,
                                            const ellery::SteamGen &steamGen, tarnwick::FileChoice &files,
                                            QWidget *parent);

    /// place: of the entry; -1 for a new fill. setup: from editorSetup().
    QueryFillDlg(const FillEditorContext &context, int place, const query::SQLDlg::Setup &setup);

protected:
    bool store() override;

private:
    FillEditorContext m_context;
    int m_place;
};

} // namespace map

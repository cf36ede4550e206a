// The rows of the result and the tubes of the map, in both directions.
#include "JQueryWin.h"
#include "QueryPage.h"
#include "SQLDlg.h"

#include <query/Messages.h>
#include <query/TubeRows.h>
#include <tarnwick/gui/ProgressDialog.h>

using namespace Qt::StringLiterals;

namespace query {

bool SQLDlg::hasTubes()
{
    if (identifiesTubes(m_editor.result(), m_setup.editor.steamGen))
        return true;
    prompts().information(messages::kNoTubeColumns);
    return false;
}

void SQLDlg::selectOnMap()
{
    if (!hasTubes())
        return;
    tarnwick::ProgressDialog progress(this, u"Select Tubes on Map"_s);
    const QList<qint32> tubes =
        tubesOfRows(m_editor.result(), m_setup.editor.steamGen, m_page->table().selectedSourceRows(), &progress);
    m_setup.selectOnMap(tubes);
    prompts().status(messages::kTubesSelected, int(tubes.size()));
}

void SQLDlg::findSelectedTubes()
{
    if (!hasTubes())
        return;
    JQueryWin &table = m_page->table();
    const tarnwick::GridModel &grid = table.grid();
    std::vector<bool> isWanted;
    {
        tarnwick::ProgressDialog progress(this, u"Find Map's Selection"_s);
        isWanted = rowsOfTubes(m_editor.result(), m_setup.editor.steamGen, m_setup.selectedOnMap(), &progress);
    }
    QItemSelection found;
    int count = 0;
    const int last = grid.columnCount() - 1;
    for (int row = 0; row < grid.rowCount(); ++row) {
        const int begin = row;
        while (row < grid.rowCount() && isWanted[size_t(grid.sourceRow(row))])
            ++row;
        if (row > begin)
            found.append(QItemSelectionRange(grid.index(begin, 0), grid.index(row - 1, last)));
        count += row - begin;
    }
    if (count > 0)
        table.setCurrentIndex(found.first().topLeft());
    table.selectionModel()->select(found, QItemSelectionModel::ClearAndSelect);
    prompts().status(messages::kRowsOfSelection, count);
}

} // namespace query

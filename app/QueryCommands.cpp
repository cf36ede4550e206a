#include "QueryCommands.h"

#include <app/logic/ProjectSession.h>
#include <app/logic/WindowCommandTable.h>

#include <map/FillCommit.h>
#include <query/dialogs/SQLDlg.h>
#include <tarnwick/gui/FileDialogs.h>

namespace app {

void QueryCommands::bind(tarnwick::CommandHandlers &handlers)
{
    handlers.bind(OpenSqlEditor, [this] { openSqlEditor(); });
}

void QueryCommands::openSqlEditor(const QString &file)
{
    if (!db::checkConnected(m_session.database()))
        return;
    query::SQLDlg dialog({.editor = {.session = m_session.database(),
                                     .context = m_session.queryContext(),
                                     .steamGen = m_session.project().steamGen,
                                     .files = *m_dialogs,
                                     .optionsName = QStringLiteral("sql"),
                                     .hasTransaction = true},
                          .mode = query::TableMode::Edit,
                          .isFull = true,
                          .parent = m_parent,
                          .markOnMap =
                              [this](const query::QueryDocument &document, query::QueryResult &result) {
                                  return map::commitQueryFill(m_session.map(), m_session.fillRunner(), -1, document,
                                                              result);
                              },
                          .selectOnMap =
                              [this](const QList<qint32> &tubes) {
                                  m_session.map().change(QStringLiteral("Select Tubes"),
                                                         [&tubes](map::MapEdit &edit) { edit.setSelection(tubes); });
                              },
                          .selectedOnMap = [this] { return m_session.map().selection(); }});
    if (!file.isEmpty())
        dialog.openFile(file);
    dialog.exec();
}

} // namespace app

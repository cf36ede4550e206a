#include "ResultCommands.h"

#include <app/logic/ProjectSession.h>
#include <app/logic/WindowCommandTable.h>

#include <results/dialogs/ReportImportDlg.h>
#include <tarnwick/gui/FileDialogs.h>

namespace app {

void ResultCommands::bind(tarnwick::CommandHandlers &handlers)
{
    handlers.bind(UploadReports, [this] { uploadReports(); });
}

void ResultCommands::uploadReports()
{
    results::ReportImportDlg dialog({.session = m_session.database(),
                                     .project = m_session.project(),
                                     .files = *m_dialogs,
                                     .printMacros = [this] { return m_session.printMacros(); },
                                     .parent = m_parent});
    dialog.exec();
}

} // namespace app

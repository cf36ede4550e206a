#include "ResultCommands.h"

#include <app/logic/ProjectSession.h>
#include <app/logic/WindowCommandTable.h>

#include <conversion/dialogs/ReportConvDlg.h>
#include <map/FillCommit.h>
#include <plans/ListFill.h>
#include <results/dialogs/PalomineHistoryDlg.h>
#include <results/dialogs/RepairDlg.h>
#include <results/dialogs/ReportImportDlg.h>
#include <results/dialogs/ReportLogDlg.h>
#include <tarnwick/gui/FileDialogs.h>

using namespace Qt::StringLiterals;

namespace app {

void ResultCommands::bind(tarnwick::CommandHandlers &handlers)
{
    handlers.bind(UploadReports, [this] { uploadReports(); });
    handlers.bind(CreateHistory, [this] { showHistory(); });
    handlers.bind(ConvertReports, [this] { convertReports(); });
    handlers.bind(ShowReportLog, [this] { showLog(); });
    handlers.bind(Repairs, [this] { showRepairs(); });
}

void ResultCommands::uploadReports(const QStringList &files)
{
    results::ReportImportDlg dialog({.session = m_session.database(),
                                     .project = m_session.project(),
                                     .files = *m_dialogs,
                                     .printMacros = [this] { return m_session.printMacros(); },
                                     .parent = m_parent});
    if (!files.isEmpty())
        dialog.openFiles(files);
    dialog.exec();
}

void ResultCommands::convertReports(const QStringList &files)
{
    conversion::ReportConvDlg dialog({.prompts = m_session.prompts(),
                                      .project = m_session.project(),
                                      .files = *m_dialogs,
                                      .printMacros = [this] { return m_session.printMacros(); },
                                      .parent = m_parent});
    if (!files.isEmpty())
        dialog.openFiles(files);
    dialog.exec();
}

void ResultCommands::showLog()
{
    results::ReportLogDlg(m_session.database(), m_session.project(), *m_dialogs, m_parent).exec();
}

void ResultCommands::showHistory()
{
    results::PalomineHistoryDlg dialog({.session = m_session.database(),
                                        .project = m_session.project(),
                                        .files = *m_dialogs,
                                        .printMacros = [this] { return m_session.printMacros(); },
                                        .parent = m_parent});
    dialog.exec();
}

void ResultCommands::showRepairs()
{
    const auto show = [this](const QString &label, const QList<qint32> &tubes) { showRepairsInMap(label, tubes); };
    results::RepairDlg::showRepairs({.session = m_session.database(),
                                     .project = m_session.project(),
                                     .tubes = m_session.map().tubes(),
                                     .showInMap = show,
                                     .printMacros = [this] { return m_session.printMacros(); },
                                     .parent = m_parent});
}

void ResultCommands::showRepairsInMap(const QString &label, const QList<qint32> &tubes)
{
    map::MapDocument &map = m_session.map();
    plans::ListFill fill;
    fill.label = label;
    fill.parameters.name = label;
    for (const qint32 tube : tubes) {
        const ellery::TubeAddress &address = map.component()[tube].address;
        plans::ListFillTube entry;
        entry.entryNum = qint32(fill.parameters.entries.size()) + 1;
        entry.sec = address.sec;
        entry.row = address.row;
        entry.col = address.col;
        fill.parameters.entries.append(entry);
    }
    fill.mark.colour = map::paletteColour(map.count());
    m_session.fillRunner().compute(fill, map.component(), map.tubes());
    map.change(u"Show Repairs In Map"_s, [&fill](map::MapEdit &edit) { edit.addEntry(fill.clone(), true); });
}

} // namespace app

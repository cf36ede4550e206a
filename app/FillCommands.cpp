#include "FillCommands.h"

#include "LegendModel.h"
#include "LegendView.h"
#include "MapPane.h"
#include "PlanCommands.h"
#include "SidePanel.h"

#include <app/logic/Messages.h>
#include <app/logic/ProjectSession.h>
#include <app/logic/WindowCommandTable.h>
#include <app/logic/WindowConditions.h>

#include <brannock/gui/ChooseSymbolDlg.h>
#include <brannock/gui/TubesheetMap.h>
#include <map/dialogs/FillDialogs.h>
#include <map/dialogs/QueryFillDlg.h>
#include <map/FillCommit.h>
#include <map/FillPreview.h>
#include <map/LegendCommands.h>
#include <map/Messages.h>
#include <query/Messages.h>
#include <query/QueryDocument.h>
#include <tarnwick/CommandHandlers.h>
#include <tarnwick/Failures.h>
#include <tarnwick/gui/FileDialogs.h>
#include <tarnwick/gui/Guarded.h>

#include <QScopeGuard>

namespace app {

/// The kind whose dialog is the SQL editor.
static const QString kQueryKey = QStringLiteral("QUERY");
static constexpr QLatin1String kListFill("LIST FILL");

static map::FillDialogContext dialogContext(ProjectSession &session, MapPane &map, QWidget *parent)
{
    return {{session.map(), session.fillRunner(), session.roots()}, map.map().options(), parent};
}

bool FillCommands::has(int place) const
{
    return place >= 0 && place < m_session.map().count();
}

void FillCommands::bind(tarnwick::CommandHandlers &handlers)
{
    for (const plans::MapFillType *type : plans::MapFillType::all()) {
        const tarnwick::CommandRow *row = kWindowCommands.row(QString(u"fill" + type->name));
        if (row && row->condition != When::Later)
            handlers.bind(row->id, [this, key = type->key] { make(key); });
    }
}

void FillCommands::make(const QString &key)
{
    bool isMade = false;
    if (key == kQueryKey)
        isMade = openQueryFill(-1);
    else if (key == kListFill)
        isMade = m_plans.makeList();
    else
        isMade = map::openNewFill(dialogContext(m_session, m_map, m_parent), key);
    if (isMade)
        m_panel.legendView().setCurrentEntry(m_session.map().count() - 1);
}

void FillCommands::openList(const QString &machinePath)
{
    if (m_plans.makeList(machinePath))
        m_panel.legendView().setCurrentEntry(m_session.map().count() - 1);
}

bool FillCommands::openQueryFill(int place)
{
    if (!db::checkConnected(m_session.database()))
        return false;
    map::QueryFillDlg dialog({m_session.map(), m_session.fillRunner(), m_session.roots()}, place,
                             map::QueryFillDlg::editorSetup(m_session.database(), m_session.queryContext(),
                                                            m_session.project().steamGen, *m_dialogs, m_parent));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    // The line of the dialog has said it, and is closed.
    const plans::MapFill &fill = m_session.map().entry(place < 0 ? m_session.map().count() - 1 : place);
    const QString label = fill.label.trimmed();
    const bool isFormerText = place < 0 && dialog.editor().isEditedSinceRun();
    m_session.prompts().status(isFormerText ? map::messages::kFillOfFormerText : map::messages::kFillDone,
                               label.isEmpty() ? fill.typeKey : label, fill.fillCount);
    return true;
}

bool FillCommands::addQueryFile(const QString &machinePath)
{
    query::QueryDocument query;
    const auto read = [&] { query::readQueryFile(query, machinePath, m_session.roots()); };
    if (!tarnwick::attempt(m_session.prompts(), read, query::messages::kReadFile))
        return false;
    const tarnwick::WaitCursor wait;
    return map::addFillOfQuery(m_session.map(), m_session.fillRunner(), query);
}

void FillCommands::edit(int place)
{
    if (!has(place))
        return;
    const plans::MapFill &fill = m_session.map().entry(place);
    if (fill.typeKey == kQueryKey)
        openQueryFill(place);
    else if (fill.typeKey == kListFill)
        m_plans.editList(place);
    else if (map::hasFillDialog(fill.typeKey))
        map::openFill(dialogContext(m_session, m_map, m_parent), place);
    else
        m_session.prompts().status(messages::kNoFillDialog, fill.label.trimmed());
}

void FillCommands::chooseMark(int place)
{
    if (!has(place))
        return;
    const map::MapDocument &document = m_session.map();
    ellery::TubeStates trial;
    const auto tryOut = [&](const ellery::TubeMark &mark) {
        trial = map::tubesWithMark(document, place, mark);
        m_map.showTrial(&trial);
        m_panel.legendModel().showTrial(place, mark);
    };
    brannock::ColourChooser colours(m_session.roots(), m_session.prompts());
    brannock::ChooseSymbolDlg dialog(document.entry(place).mark, m_map.map().options(), colours, m_parent);
    QObject::connect(&dialog, &brannock::ChooseSymbolDlg::markChanged, &dialog, tryOut);
    bool isChosen = false;
    {
        const auto end = qScopeGuard([&] {
            m_map.showTrial(nullptr);
            m_panel.legendModel().showTrial(place, {});
        });
        isChosen = dialog.exec() == QDialog::Accepted;
    }
    if (isChosen)
        map::LegendCommands(m_session.map(), m_session.fillRunner()).setMark(place, dialog.mark());
}

} // namespace app

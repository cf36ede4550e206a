// What the main window shows, brought up to date after changes.
#include "CommandActions.h"
#include "DBase.h"
#include "LegendModel.h"
#include "MainToolBar.h"
#include "RecentMenus.h"
#include "SidePanel.h"
#include "ViewBar.h"

#include <app/logic/Messages.h>
#include <app/logic/StartUp.h>

#include <plans/paint/MapLook.h>

#include <QDir>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>

using namespace Qt::StringLiterals;

namespace app {

void DBase::scheduleRefresh()
{
    // Many changes in a row are shown once.
    if (std::exchange(m_refreshScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &DBase::refreshAll, Qt::QueuedConnection);
}

void DBase::refreshAll()
{
    m_refreshScheduled = false;
    m_map->refresh();
    m_side->legendModel().refresh();
    refreshPanels();
    showTube(m_tubeShown); // its symbol may be another one now
    refreshCommands();
    refreshProtection();
    keepWork();
}

void DBase::keepWork()
{
    if (!m_recoveryDelay.isActive())
        m_recoveryDelay.start();
}

void DBase::refreshProtection()
{
    const QString problem = m_session->recoveryProblem();
    m_protectionText->setVisible(!problem.isEmpty());
    m_protectionText->setToolTip(tarnwick::format(messages::kRecoveryFailed.text, problem));
}

void DBase::sessionChanged()
{
    if (m_session->hasProject() && !m_map->steamGen())
        m_map->setSteamGen(&steamGen(), &tubes()); // the component was read again
    refreshMenus();
    refreshTitle();
    refreshAll();
}

void DBase::redrawMap()
{
    m_map->refresh();
    scheduleRefresh();
}

void DBase::refreshLegend()
{
    m_side->legendModel().refresh();
    scheduleRefresh();
}

void DBase::setBusy(bool busy)
{
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

void DBase::refreshPanels()
{
    if (!m_session->hasProject()) {
        m_side->setProjectText({});
        m_side->setStatusText({});
        m_selectionText->clear();
        m_mapText->clear();
        return;
    }
    const brannock::Project &project = m_session->project();
    m_side->setProjectText(projectPanelText(project, m_session->map().name(), m_session->databaseStatus()));
    m_side->setStatusText(statusPanelText(tubes()));
    m_selectionText->setText(selectionText(tubes()));
    m_mapText->setText(m_session->undo().isModified() ? u"Map not saved"_s : QString());
}

CommandContext DBase::commandContext()
{
    CommandContext context;
    const ellery::SteamGen &sg = m_session->project().steamGen;
    const int pointed = m_commands->pointedTube;
    context.hasProject = m_session->hasProject();
    context.hasSections = sg.hasSections();
    context.hasEntries = m_session->legend().count() > 0;
    context.canUndo = m_session->undo().canUndo();
    context.canRedo = m_session->undo().canRedo();
    context.hasPointedTube = pointed >= 0 && pointed < sg.numTube();
    context.pointedTubeHasSymbol = context.hasPointedTube && !tubes().isOpen(pointed);
    return context;
}

void DBase::refreshCommands()
{
    const CommandContext context = commandContext();
    m_actions->refresh(context);
    m_mainBar->refresh(context);
    // A name may hold "&", which a menu would take for the mark of a key.
    const QString label = m_session->undo().undoLabel().replace(u'&', u"&&"_s);
    m_actions->setText(Undo, label.isEmpty() ? u"Undo"_s : tarnwick::format(u"Undo %S", label));
    m_actions->setChecked(FlipHorizontal, m_map->xOrientation() == -1);
    m_actions->setChecked(FlipVertical, m_map->yOrientation() == -1);
    m_actions->setChecked(ShowFloatingId, m_map->hasTubeTip());
    refreshViewCommands();
    m_viewBar->setEnabled(context.hasProject);
    m_viewBar->findField()->setEnabled(context.hasProject);
    m_mainBar->setEnabled(context.hasProject);
    m_splitter->setEnabled(context.hasProject);
}

void DBase::refreshViewCommands()
{
    m_actions->extra(Extra::PreviousView)->setEnabled(m_session->hasProject() && m_map->hasPreviousView());
    m_actions->extra(Extra::NextView)->setEnabled(m_session->hasProject() && m_map->hasNextView());
}

void DBase::refreshMenus()
{
    // Without a project a menu opens only where something in it can be chosen, or to show what there would be.
    for (QAction *top : menuBar()->actions()) {
        const QString name = top->menu()->objectName();
        const bool opens = name == u"menuFile"_s || name == u"menuUtil"_s || name == u"menuHelp"_s;
        top->setEnabled(m_session->hasProject() || opens);
    }
    QList<RecentMenus::Entry> projects;
    for (const QString &folder : m_session->recentProjects())
        projects.append({QDir::toNativeSeparators(folder), folder});
    m_recent->setProjects(projects);
    const tarnwick::PathRoots roots = m_session->roots();
    const auto entries = [&roots](const QStringList &paths) {
        QList<RecentMenus::Entry> list;
        for (const QString &path : paths)
            list.append({tarnwick::SuitePath(path).shown(), tarnwick::SuitePath(path).machinePath(roots)});
        return list;
    };
    const RecentFiles::Lists files = m_session->hasProject() ? m_session->recentFiles() : RecentFiles::Lists();
    m_recent->setDatabases(entries(files.databases));
    m_recent->setMaps(entries(files.maps));
    for (const int placeholder : {NoRecentDatabase, NoRecentMap})
        m_actions->menuOf(placeholder)->setEnabled(m_session->hasProject());
}

void DBase::refreshTitle()
{
    const brannock::Project &project = m_session->project();
    setWindowTitle(app::windowTitle(QDir::toNativeSeparators(project.folder), project.name, isMinimized()));
}

void DBase::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && m_session)
        refreshTitle();
}

void DBase::applyMapOptions()
{
    m_map->setOptions(plans::mapOptions(m_session->options()));
}

QStringList DBase::tipLines(int tube) const
{
    const ellery::SteamGen &sg = m_session->project().steamGen;
    const plans::MapLegend &legend = m_session->legend();
    const ellery::TubeMark mark = legend.tubes().mark(tube);
    if (mark.isOpen())
        return {};
    const ellery::TubeAddress address = sg[tube].address;
    for (int i = legend.count() - 1; i >= 0; --i) {
        const plans::MapFill &fill = legend.entry(i);
        if (!fill.shown || fill.symbol != mark.symbol || fill.colour != mark.colour)
            continue;
        const auto marks = [&](qint32 other) {
            return other == tube ||
                   (fill.allSections && sg[other].address.row == address.row && sg[other].address.col == address.col);
        };
        if (std::any_of(fill.tubes.begin(), fill.tubes.end(), marks))
            return {fill.typeName() + u"  "_s + fill.label.trimmed()};
    }
    return {};
}

} // namespace app

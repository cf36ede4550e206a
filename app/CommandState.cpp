#include "CommandState.h"

#include "CommandActions.h"
#include "MainToolBar.h"
#include "RecentMenus.h"
#include "ViewBar.h"
#include "WindowCommands.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>

using namespace Qt::StringLiterals;

namespace app {

CommandContext CommandState::context() const
{
    const map::MapDocument &document = m_session.map();
    const int pointed = m_parts.commands.pointedTube;
    CommandContext context;
    context.hasProject = m_session.hasProject();
    context.hasSections = document.component().hasSections();
    context.hasEntries = document.count() > 0;
    context.canUndo = document.canUndo();
    context.canRedo = document.canRedo();
    context.hasPointedTube = pointed >= 0 && pointed < document.tubes().count();
    context.pointedTubeHasSymbol = context.hasPointedTube && !document.tubes().isOpen(pointed);
    return context;
}

void CommandState::refresh()
{
    const CommandContext now = context();
    const map::MapState &state = m_session.map().state();
    m_parts.actions.refresh(now);
    m_parts.mainBar.refresh(now);
    // A name may hold "&", which a menu would take for the mark of a key.
    const QString label = m_session.map().undoLabel().replace(u'&', u"&&"_s);
    m_parts.actions.setText(Undo, label.isEmpty() ? u"Undo"_s : tarnwick::format(u"Undo %S", label));
    m_parts.actions.setChecked(FlipHorizontal, state.xOrientation == -1);
    m_parts.actions.setChecked(FlipVertical, state.yOrientation == -1);
    m_parts.actions.setChecked(ShowFloatingId, m_parts.map.hasTubeTip());
    refreshView();
    for (QWidget *part : std::initializer_list<QWidget *>{&m_parts.viewBar, m_parts.viewBar.findField(),
                                                          &m_parts.mainBar, &m_parts.splitter})
        part->setEnabled(now.hasProject);
}

void CommandState::refreshView()
{
    const brannock::TubesheetMap &map = m_parts.map;
    m_parts.actions.extra(Extra::PreviousView)->setEnabled(m_session.hasProject() && map.hasPreviousView());
    m_parts.actions.extra(Extra::NextView)->setEnabled(m_session.hasProject() && map.hasNextView());
}

void CommandState::refreshMenus()
{
    // Without a project a menu opens only where something in it can be chosen, or to show what there would be.
    for (QAction *top : m_parts.menuBar.actions()) {
        const QString name = top->menu()->objectName();
        const bool opens = name == u"menuFile"_s || name == u"menuUtil"_s || name == u"menuHelp"_s;
        top->setEnabled(m_session.hasProject() || opens);
    }
    QList<RecentMenus::Entry> projects;
    for (const QString &folder : m_session.recentProjects())
        projects.append({QDir::toNativeSeparators(folder), folder});
    m_parts.recent.setProjects(projects);
    const tarnwick::PathRoots roots = m_session.roots();
    const auto entries = [&roots](const QStringList &paths) {
        QList<RecentMenus::Entry> list;
        for (const QString &path : paths)
            list.append({tarnwick::SuitePath(path).shown(), tarnwick::SuitePath(path).machinePath(roots)});
        return list;
    };
    const RecentFiles::Lists files = m_session.hasProject() ? m_session.recentFiles() : RecentFiles::Lists();
    m_parts.recent.setDatabases(entries(files.databases));
    m_parts.recent.setMaps(entries(files.maps));
    for (const int placeholder : {NoRecentDatabase, NoRecentMap})
        m_parts.actions.menuOf(placeholder)->setEnabled(m_session.hasProject());
}

} // namespace app

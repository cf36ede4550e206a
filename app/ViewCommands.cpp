#include "ViewCommands.h"

#include "CommandRunner.h"
#include "FullScreen.h"
#include "LegendView.h"
#include "MapPane.h"
#include "SidePanel.h"
#include "TextBox.h"
#include "ViewBar.h"
#include "WindowCommands.h"

#include <app/logic/Messages.h>
#include <app/logic/TubeFinder.h>
#include <app/logic/WindowCommandTable.h>

#include <brannock/gui/TubesheetMap.h>
#include <tarnwick/CommandHandlers.h>

#include <QMainWindow>
#include <QToolBar>
#include <QToolButton>
#include <tarnwick/gui/Help.h>

namespace app {

/// The first enabled button, where the keyboard starts.
static QWidget *firstButton(const QToolBar &bar)
{
    const QList<QAction *> actions = bar.actions();
    const auto first = std::find_if(actions.begin(), actions.end(),
                                    [](QAction *each) { return each->isEnabled() && !each->isSeparator(); });
    return bar.widgetForAction(first == actions.end() ? actions.first() : *first);
}

ViewCommands::ViewCommands(ProjectSession &session, const Parts &parts)
    : m_session(session)
    , m_parts(parts)
{
    connectBar();
}

void ViewCommands::connectBar()
{
    ViewBar &bar = m_parts.viewBar;
    constexpr int kMostCompletions = 100;
    bar.setCompletions([this](const QString &text) {
        return TubeFinder(m_session.map().component()).completions(text, kMostCompletions);
    });
    QObject::connect(&bar, &ViewBar::changesWanted, &bar, [this] { showChanges(); });
    QObject::connect(&bar, &ViewBar::findRequested, &bar, [this](const QString &address) {
        m_parts.runner.perform([this, &address] { findTube(address); });
    });
    QObject::connect(&bar, &ViewBar::changesRequested, &bar, [this](int position) {
        m_parts.runner.perform([this, position] { m_parts.commands.moveTo(position); });
    });
    QObject::connect(&bar, &ViewBar::findLeft, &m_parts.map.map(), qOverload<>(&QWidget::setFocus));
}

void ViewCommands::showChanges()
{
    const map::UndoHistory &changes = m_session.map().history();
    const bool hasFile = !m_session.map().file().isEmpty();
    m_parts.viewBar.setChanges(changes.labels(), changes.position(), hasFile ? changes.savedPosition() : -1);
}

void ViewCommands::bind(tarnwick::CommandHandlers &handlers)
{
    bindMap(handlers);
    handlers.bind(MapFullScreen, [this] { m_parts.fullScreen.toggle(); });
    handlers.bind(FindTube, [this] { startFind(); });
    handlers.bind(ListOfChanges, [this] { m_parts.viewBar.showChanges(); });
    handlers.bind(NextPart, [this] { goToNextPart(); });
    handlers.bind(OpenGuide, [this] {
        if (const QString problem = tarnwick::openGuide(); !problem.isEmpty())
            m_session.prompts().showInformation(problem);
    });
    handlers.bind(ListOfKeys, [this] { showKeys(&m_parts.window); });
    handlers.bind(ProjectInfo, [this] { showProjectInfo(&m_parts.window, m_session); });
    handlers.bind(About, [this] { showAbout(&m_parts.window, m_session); });
    handlers.bind(Failures, [this] { showFailures(&m_parts.window); });
    handlers.bind(Exit, [this] { m_parts.window.close(); });
}

void ViewCommands::bindMap(tarnwick::CommandHandlers &handlers)
{
    brannock::TubesheetMap &map = m_parts.map.map();
    handlers.bind(ZoomIn, [&map] { map.zoomIn(); });
    handlers.bind(ZoomOut, [&map] { map.zoomOut(); });
    handlers.bind(ZoomFit, [&map] { map.fit(); });
    handlers.bind(PreviousView, [&map] { map.previousView(); });
    handlers.bind(NextView, [&map] { map.nextView(); });
    handlers.bindCheckable(
        ShowFloatingId, [&map] { map.setTubeTip(!map.hasTubeTip()); }, [&map] { return map.hasTubeTip(); });
    using Mode = brannock::TubesheetMap::DragMode;
    for (const auto &[command, dragMode] :
         {std::pair(DragRectangle, Mode::Rectangle), std::pair(DragLasso, Mode::Lasso), std::pair(DragZoom, Mode::Zoom),
          std::pair(DragMove, Mode::Pan)})
        handlers.bindCheckable(
            command, [&map, mode = dragMode] { map.setDragMode(mode); },
            [&map, mode = dragMode] { return map.dragMode() == mode; });
}

void ViewCommands::startFind()
{
    if (m_parts.fullScreen.isOn()) // the full screen hides the field
        m_parts.fullScreen.toggle();
    m_parts.viewBar.focusFind();
}

void ViewCommands::findTube(const QString &address)
{
    const ellery::SteamGen &component = m_session.map().component();
    const TubeFinder finder(component);
    const int tube = finder.find(address);
    if (tube < 0) {
        const QString hint = finder.hint(address);
        m_session.prompts().status(messages::kNoSuchTube, address.trimmed(), hint);
        m_parts.viewBar.showFindProblem(tarnwick::format(messages::kNoSuchTube.text, address.trimmed(), hint));
        return;
    }
    m_parts.map.showTube(tube);
    const ellery::TubeAddress found = component[tube].address;
    m_session.prompts().status(messages::kTubeFound, component.tubeName(found));
}

void ViewCommands::goToNextPart()
{
    const std::initializer_list<QWidget *> parts = {&m_parts.map.map(), &m_parts.side.legendView(),
                                                    firstButton(m_parts.mainBar), m_parts.viewBar.findField()};
    const QWidget *focus = m_parts.window.focusWidget();
    const auto holdsFocus = [focus](const QWidget *part) {
        return part == focus || part->isAncestorOf(focus) ||
               (qobject_cast<const QToolButton *>(part) && focus && part->parentWidget()->isAncestorOf(focus));
    };
    auto next = std::find_if(parts.begin(), parts.end(), holdsFocus);
    for (size_t tried = 0; tried < parts.size(); ++tried) {
        next = next == parts.end() || next + 1 == parts.end() ? parts.begin() : next + 1;
        if ((*next)->isVisible() && (*next)->isEnabled()) {
            (*next)->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

} // namespace app

#include "ViewCommands.h"

#include "CommandRunner.h"
#include "FullScreen.h"
#include "LegendView.h"
#include "MainToolBar.h"
#include "MapPane.h"
#include "SidePanel.h"
#include "TextBox.h"
#include "ViewBar.h"
#include "WindowCommands.h"

#include <app/logic/Messages.h>
#include <app/logic/TubeFinder.h>

#include <QMainWindow>
#include <QToolButton>

namespace app {

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
    brannock::TubesheetMap &map = m_parts.map.map();
    QObject::connect(&bar, &ViewBar::dragModeChosen, &map, &brannock::TubesheetMap::setDragMode);
    QObject::connect(&bar, &ViewBar::findLeft, &map, qOverload<>(&QWidget::setFocus));
}

bool ViewCommands::isOnlyView(Extra extra)
{
    constexpr Extra kViews[] = {Extra::ZoomIn,   Extra::ZoomOut, Extra::ZoomFit,  Extra::PreviousView, Extra::NextView,
                                Extra::FindTube, Extra::Changes, Extra::NextPart, Extra::Keys};
    return std::find(std::begin(kViews), std::end(kViews), extra) != std::end(kViews);
}

void ViewCommands::showChanges()
{
    const map::UndoHistory &changes = m_session.map().history();
    const bool hasFile = !m_session.map().file().isEmpty();
    m_parts.viewBar.setChanges(changes.labels(), changes.position(), hasFile ? changes.savedPosition() : -1);
}

bool ViewCommands::run(Extra extra)
{
    switch (extra) {
    case Extra::Redo:
        m_parts.commands.redo();
        return true;
    case Extra::FindTube:
        if (m_parts.fullScreen.isOn()) // which hides the field
            m_parts.fullScreen.toggle();
        m_parts.viewBar.focusFind();
        return true;
    case Extra::Changes:
        m_parts.viewBar.showChanges();
        return true;
    case Extra::NextPart:
        goToNextPart();
        return true;
    case Extra::Keys:
        showKeys(&m_parts.window);
        return true;
    default:
        return runZoom(extra);
    }
}

bool ViewCommands::runZoom(Extra extra)
{
    brannock::TubesheetMap &map = m_parts.map.map();
    switch (extra) {
    case Extra::ZoomIn:
        map.zoomIn();
        return true;
    case Extra::ZoomOut:
        map.zoomOut();
        return true;
    case Extra::ZoomFit:
        map.fit();
        return true;
    case Extra::PreviousView:
        map.previousView();
        return true;
    case Extra::NextView:
        map.nextView();
        return true;
    default:
        return false;
    }
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
    m_session.prompts().status(messages::kTubeFound, component.tubeName(found.row, found.col, found.sec));
}

void ViewCommands::goToNextPart()
{
    const std::initializer_list<QWidget *> parts = {&m_parts.map.map(), &m_parts.side.legendView(),
                                                    m_parts.mainBar.firstButton(), m_parts.viewBar.findField()};
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

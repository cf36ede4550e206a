#pragma once
#include <app/logic/Commands.h>

class QMenuBar;
class QSplitter;

namespace brannock {
class TubesheetMap;
}

namespace app {

class CommandActions;
class MainToolBar;
class ProjectSession;
class RecentMenus;
class ViewBar;
class WindowCommands;

/// Enables and checks commands, buttons and menus by the state of project and map.
class CommandState
{
public:
    struct Parts
    {
        CommandActions &actions;
        RecentMenus &recent;
        MainToolBar &mainBar;
        ViewBar &viewBar;
        QMenuBar &menuBar;
        QSplitter &splitter;
        brannock::TubesheetMap &map;
        const WindowCommands &commands;
    };
    CommandState(ProjectSession &session, const Parts &parts)
        : m_session(session)
        , m_parts(parts)
    {
    }

    void refresh();
    /// After the view of the map has changed.
    void refreshView();
    /// Recent lists, and which menus open: after a project or database was opened or closed.
    void refreshMenus();

private:
    CommandContext context() const;

    ProjectSession &m_session;
    const Parts m_parts;
};

} // namespace app

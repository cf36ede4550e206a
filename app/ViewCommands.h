#pragma once
#include <app/logic/Commands.h>

class QMainWindow;

namespace app {

class CommandRunner;
class FullScreen;
class MainToolBar;
class MapPane;
class ProjectSession;
class SidePanel;
class ViewBar;
class WindowCommands;

/// Commands on the view of the map, finding tubes, and the way from one part of the window to the next.
class ViewCommands
{
public:
    struct Parts
    {
        QMainWindow &window;
        MapPane &map;
        SidePanel &side;
        MainToolBar &mainBar;
        ViewBar &viewBar;
        FullScreen &fullScreen;
        WindowCommands &commands;
        CommandRunner &runner;
    };
    ViewCommands(ProjectSession &session, const Parts &parts);

    /// Runs a command. False when it is another's.
    bool run(Extra extra);
    /// Whether a command changes only what is seen of the map and the window.
    static bool isOnlyView(Extra extra);
    /// Selects the tube with a typed address, or reports why there is none.
    void findTube(const QString &address);

private:
    void connectBar();
    bool runZoom(Extra extra);
    void goToNextPart();
    void showChanges();

    ProjectSession &m_session;
    const Parts m_parts;
};

} // namespace app

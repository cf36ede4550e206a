#pragma once
#include <QString>

class QMainWindow;
class QToolBar;

namespace tarnwick {
class CommandHandlers;
}

namespace app {

class CommandRunner;
class FullScreen;
class MapPane;
class ProjectSession;
class SidePanel;
class ViewBar;
class WindowCommands;

/// Commands of the view of the map: zooming, finding tubes, moving the focus between parts of the window.
class ViewCommands
{
public:
    struct Parts
    {
        QMainWindow &window;
        MapPane &map;
        SidePanel &side;
        QToolBar &mainBar;
        ViewBar &viewBar;
        FullScreen &fullScreen;
        WindowCommands &commands;
        CommandRunner &runner;
    };
    ViewCommands(ProjectSession &session, const Parts &parts);

    /// Binds the commands to their actions.
    void bind(tarnwick::CommandHandlers &handlers);
    /// Selects the tube with a typed address, or reports why it does not exist.
    void findTube(const QString &address);

private:
    void connectBar();
    void bindMap(tarnwick::CommandHandlers &handlers);
    void startFind();
    void goToNextPart();
    void showChanges();

    ProjectSession &m_session;
    const Parts m_parts;
};

} // namespace app

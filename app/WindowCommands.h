#pragma once
#include <app/logic/LegendEditor.h>
#include <app/logic/ProjectSession.h>

#include <brannock/gui/TubesheetMap.h>

namespace app {

class FileDialogs;
class RecentMenus;

/// What the window itself does for commands, since only a window can.
class WindowActions
{
public:
    virtual ~WindowActions() = default;
    virtual void openProjectFolder(const QString &folder) = 0;
    virtual void toggleFullScreen() = 0;
    virtual void closeWindow() = 0;
    virtual void showAbout() = 0;
    virtual void showProjectInfo() = 0;
};

/// Carries out the numbered commands.
class WindowCommands
{
public:
    WindowCommands(ProjectSession &session, plans::MapHost &host, brannock::TubesheetMap &map, RecentMenus &recent,
                   WindowActions &window);
    /// Tests put their own in place of the system's.
    void setFileDialogs(FileDialogs *dialogs) { m_dialogs = dialogs; }

    /// The tube that the pop-up menu was opened on, -1 without one; commands that need it take it from here.
    int pointedTube = -1;
    /// The legend's entry that its pop-up menu was opened on.
    int pointedEntry = -1;

    void run(int command);
    void updateMap();

private:
    bool runMap(int command);
    bool runDatabase(int command);
    bool runProject(int command);
    bool runProgram(int command);
    void select(int command);
    void flip(int command);
    void openProject();
    void newDatabase();
    void openDatabase();
    bool confirmClear();
    void startComponentMaker();
    void createShortcut();

    ProjectSession &m_session;
    plans::MapHost &m_host;
    brannock::TubesheetMap &m_map;
    RecentMenus &m_recent;
    WindowActions &m_window;
    FileDialogs *m_dialogs = nullptr;
    LegendEditor m_legend;
};

} // namespace app

#pragma once
#include "MapPrinting.h"

#include <app/logic/LegendEditor.h>
#include <app/logic/MapCommands.h>
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
    /// Work that is in no file has changed: the copy for the case of a crash follows.
    virtual void keepWork() = 0;
};

/// Carries out the numbered commands.
class WindowCommands
{
public:
    /// parent: of the dialogs
    WindowCommands(ProjectSession &session, plans::MapHost &host, brannock::TubesheetMap &map, RecentMenus &recent,
                   WindowActions &window, QWidget *parent);
    /// Tests put their own in place of the system's.
    void setFileDialogs(FileDialogs *dialogs);

    /// The tube that the pop-up menu was opened on, -1 without one; commands that need it take it from here.
    int pointedTube = -1;
    /// The legend's entry that its pop-up menu was opened on.
    int pointedEntry = -1;

    void run(int command);
    void redo();
    /// As many changes of the map stand as this; the others are undone.
    void moveTo(int position);
    void updateMap();
    void editHeader();
    /// Asks about unsaved changes of the map. False: the user wants to stay with it.
    bool mayReplaceMap() { return m_files.mayReplaceMap(); }

private:
    bool runFile(int command);
    bool runMap(int command);
    bool runDatabase(int command);
    bool runProject(int command);
    bool runProgram(int command);
    void undo();
    void select(int command);
    void flip(int command);
    void openProject();
    void openProjectFolder(const QString &folder);
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
    QWidget *m_parent;
    LegendEditor m_legend;
    MapCommands m_files;
    MapPrinting m_printing;
};

} // namespace app

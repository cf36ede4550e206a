#pragma once
#include "MapPrinting.h"

#include <app/logic/MapCommands.h>
#include <app/logic/ProjectSession.h>

#include <map/LegendCommands.h>

#include <brannock/gui/TubesheetMap.h>
#include <QObject>

namespace app {

class FileDialogs;
class RecentMenus;

/// Carries out the numbered commands.
class WindowCommands : public QObject
{
    Q_OBJECT
public:
    /// parent: of the dialogs
    WindowCommands(ProjectSession &session, brannock::TubesheetMap &map, RecentMenus &recent, QWidget *parent);
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

Q_SIGNALS:
    // What only the window can do.
    void projectWanted(const QString &folder);
    void fullScreenWanted();
    void closeWanted();
    void aboutWanted();
    void projectInfoWanted();
    /// Work that is in no file has changed.
    void workChanged();

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
    brannock::TubesheetMap &m_map;
    RecentMenus &m_recent;
    FileDialogs *m_dialogs = nullptr;
    QWidget *m_parent;
    map::LegendCommands m_legend;
    MapCommands m_files;
    MapPrinting m_printing;
};

} // namespace app

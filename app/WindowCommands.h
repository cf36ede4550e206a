#pragma once
#include "MapPrinting.h"

#include <app/logic/MapCommands.h>
#include <app/logic/ProjectSession.h>

#include <map/LegendCommands.h>

#include <tarnwick/CommandHandlers.h>

#include <QObject>

namespace app {

class FileDialogs;

/// What the commands of files, map, database and program do.
class WindowCommands : public QObject
{
    Q_OBJECT
public:
    /// parent: of the dialogs
    WindowCommands(ProjectSession &session, QWidget *parent);
    /// Binds the commands to their actions.
    void bind(tarnwick::CommandHandlers &handlers);
    /// Tests put their own in place of the system's.
    void setFileDialogs(FileDialogs *dialogs);

    /// The tube that the pop-up menu was opened on, -1 without one; commands that need it take it from here.
    int pointedTube = -1;
    /// The legend's entry that its pop-up menu was opened on.
    int pointedEntry = -1;

    /// As many changes of the map stand as this; the others are undone.
    void moveTo(int position);
    void editHeader();
    /// Asks about unsaved changes of the map. False: the user wants to stay with it.
    bool mayReplaceMap() { return m_files.mayReplaceMap(); }

Q_SIGNALS:
    /// Only the window can open a project.
    void projectWanted(const QString &folder);
    /// Work that is in no file has changed.
    void workChanged();

private:
    void bindFiles(tarnwick::CommandHandlers &handlers);
    void bindMap(tarnwick::CommandHandlers &handlers);
    void bindDatabase(tarnwick::CommandHandlers &handlers);
    void bindProgram(tarnwick::CommandHandlers &handlers);
    void ignoreSection();
    void undo();
    void redo();
    void updateMap();
    void select(int command);
    void flip(int command);
    void openProject();
    void openProjectFolder(const QString &folder);
    void closeDatabase();
    void newDatabase();
    void openDatabase();
    void clearProjects();
    void startComponentMaker();
    void createShortcut();

    ProjectSession &m_session;
    FileDialogs *m_dialogs = nullptr;
    QWidget *m_parent;
    map::LegendCommands m_legend;
    MapCommands m_files;
    MapPrinting m_printing;
};

} // namespace app

#pragma once
#include "MapPrinting.h"

#include <app/logic/MapCommands.h>
#include <app/logic/ProjectSession.h>

#include <map/LegendCommands.h>

#include <tarnwick/CommandHandlers.h>

#include <QObject>

namespace tarnwick {
class FileDialogs;
}

namespace app {

/// Actions of the commands of files, map, database and program.
class WindowCommands : public QObject
{
    Q_OBJECT
public:
    /// parent: of the dialogs
    WindowCommands(ProjectSession &session, QWidget *parent);
    /// Binds the commands to their actions.
    void bind(tarnwick::CommandHandlers &handlers);
    /// Replaces the file dialogs in tests.
    void setFileDialogs(tarnwick::FileDialogs *dialogs);

    /// The tube that the pop-up menu was opened on, -1 for none; used by commands that need it.
    int pointedTube = -1;
    /// The legend entry that the pop-up menu was opened on.
    int pointedEntry = -1;

    /// Undoes or redoes until this number of changes of the map is in effect.
    void moveTo(int position);
    void editHeader();
    /// Asks about unsaved changes of the map. Returns false if the user cancels.
    bool mayReplaceMap() { return m_files.mayReplaceMap(); }
    /// Opens a map file after asking about unsaved changes.
    void openMap(const QString &machinePath) { m_files.open(machinePath); }

Q_SIGNALS:
    /// Emitted after a change of unsaved work.
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
    void closeDatabase();
    void newDatabase();
    void openDatabase();
    void startComponentMaker();
    void createShortcut();

    ProjectSession &m_session;
    tarnwick::FileDialogs *m_dialogs = nullptr;
    QWidget *m_parent;
    map::LegendCommands m_legend;
    MapCommands m_files;
    MapPrinting m_printing;
};

} // namespace app

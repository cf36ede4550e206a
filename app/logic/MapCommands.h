#pragma once
#include "FileChoosers.h"

namespace app {

class ProjectSession;

/// The commands on map files as the user gives them: they ask for files, and before changes would be lost.
class MapCommands
{
public:
    explicit MapCommands(ProjectSession &session)
        : m_session(session)
    {
    }
    void setFileChoice(FileChoice *choice) { m_choice = choice; }

    /// Asks whether unsaved changes are to be saved, and saves them when they are. False: whatever was to follow must
    /// not.
    bool mayReplaceMap();
    void newMap();
    void open();
    void open(const QString &machinePath);
    /// False when the map was not saved: no file was chosen, or it could not be written.
    bool save();
    bool saveAs();
    /// Copies a map of the user folder into the project and opens the copy.
    void importMap();
    void exportMap();

private:
    QString offeredName() const;
    bool copyIntoProject(const QString &from, const QString &to);

    ProjectSession &m_session;
    FileChoice *m_choice = nullptr;
};

} // namespace app

#pragma once
#include <tarnwick/FileChoice.h>

namespace app {

class ProjectSession;

/// Commands on map files: ask for a file, and ask before unsaved changes are lost.
class MapCommands
{
public:
    explicit MapCommands(ProjectSession &session)
        : m_session(session)
    {
    }
    void setFileChoice(tarnwick::FileChoice *choice) { m_choice = choice; }

    /// If the map has unsaved changes, asks whether to save them, and saves them after "Yes". Returns false if the map
    /// must not be replaced.
    bool mayReplaceMap();
    void newMap();
    void open();
    void open(const QString &machinePath);
    /// Return false if the map was not saved: the user cancelled, or the file could not be written.
    bool save();
    bool saveAs();
    /// Copies a map from the user folder to the project and opens the copy.
    void importMap();
    void exportMap();

private:
    QString offeredName() const;

    ProjectSession &m_session;
    tarnwick::FileChoice *m_choice = nullptr;
};

} // namespace app

#pragma once

class QWidget;

namespace tarnwick {
class FileDialogs;
}

namespace app {

class ProjectSession;

/// Base of the commands that open the dialogs of one subsystem: see DialogCommands.
class SubsystemCommands
{
public:
    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs) { m_dialogs = dialogs; }

protected:
    /// parent: of the dialogs.
    SubsystemCommands(ProjectSession &session, QWidget *parent)
        : m_session(session)
        , m_parent(parent)
    {
    }
    ~SubsystemCommands() = default;

    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app

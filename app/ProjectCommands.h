#pragma once
#include <tarnwick/CommandHandlers.h>

#include <QObject>

class QWidget;

namespace tarnwick {
class FileDialogs;
}

namespace app {

class ProjectSession;

/// The commands that open and make projects.
class ProjectCommands : public QObject
{
    Q_OBJECT
public:
    /// parent: of the dialogs. mayReplaceMap asks about unsaved changes; false if the user cancels.
    ProjectCommands(ProjectSession &session, std::function<bool()> mayReplaceMap, QWidget *parent);
    /// Binds the commands to their actions.
    void bind(tarnwick::CommandHandlers &handlers);
    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs) { m_dialogs = dialogs; }
    /// Opens a project after asking about unsaved changes.
    void openFolder(const QString &folder);

Q_SIGNALS:
    /// Requests another project from the window.
    void projectWanted(const QString &folder);

private:
    void openProject();
    void newProject();
    void demoProject();
    void clearProjects();

    ProjectSession &m_session;
    std::function<bool()> m_mayReplaceMap;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app

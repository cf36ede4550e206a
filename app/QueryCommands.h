#pragma once
#include <tarnwick/CommandHandlers.h>

class QWidget;

namespace tarnwick {
class FileDialogs;
}

namespace app {

class ProjectSession;

/// The commands of queries: the SQL editor.
class QueryCommands
{
public:
    /// parent: of the dialogs.
    QueryCommands(ProjectSession &session, QWidget *parent)
        : m_session(session)
        , m_parent(parent)
    {
    }
    void bind(tarnwick::CommandHandlers &handlers);
    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs) { m_dialogs = dialogs; }

    /// The SQL editor. file: a query file that it opens; empty for none.
    void openSqlEditor(const QString &file = {});

private:
    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app

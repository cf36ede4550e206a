#pragma once
#include <plans/dialogs/DialogSetup.h>
#include <tarnwick/CommandHandlers.h>

class QWidget;

namespace tarnwick {
class FileDialogs;
}

namespace app {

class ProjectSession;

/// The dialogs of inspection plans and of the list fill.
class PlanCommands
{
public:
    /// parent: of the dialogs.
    PlanCommands(ProjectSession &session, QWidget *parent)
        : m_session(session)
        , m_parent(parent)
    {
    }
    void bind(tarnwick::CommandHandlers &handlers);
    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs) { m_dialogs = dialogs; }

    /// Opens the dialog of a new list fill, or of an entry of the legend. Returns true after OK.
    bool makeList();
    bool editList(int place);
    /// What the dialogs use of the program.
    plans::DialogSetup setup() const;

private:
    void showPlans();

    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app

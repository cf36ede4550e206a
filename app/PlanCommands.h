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

    /// Opens the dialog of a new list fill, or of an entry of the legend. file: a list file that it opens; empty for
    /// none. Returns true after OK.
    bool makeList(const QString &file = {});
    bool editList(int place);
    /// The dialog of inspection plans. file: a plan file that it opens; empty for none.
    void showPlans(const QString &file = {});
    /// What the dialogs use of the program.
    plans::DialogSetup setup() const;

private:
    ProjectSession &m_session;
    QWidget *m_parent;
    tarnwick::FileDialogs *m_dialogs = nullptr;
};

} // namespace app

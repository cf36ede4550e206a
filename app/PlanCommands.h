#pragma once
#include "SubsystemCommands.h"

#include <plans/dialogs/DialogSetup.h>
#include <tarnwick/CommandHandlers.h>

namespace app {

/// The dialogs of inspection plans and of the list fill.
class PlanCommands : public SubsystemCommands
{
public:
    /// parent: of the dialogs.
    PlanCommands(ProjectSession &session, QWidget *parent)
        : SubsystemCommands(session, parent)
    {
    }
    void bind(tarnwick::CommandHandlers &handlers);

    /// Opens the dialog of a new list fill, or of an entry of the legend. file: a list file that it opens; empty for
    /// none. Returns true after OK.
    bool makeList(const QString &file = {});
    bool editList(int place);
    /// The dialog of inspection plans. file: a plan file that it opens; empty for none.
    void showPlans(const QString &file = {});
    /// What the dialogs use of the program.
    plans::DialogSetup setup() const;
};

} // namespace app

#pragma once
#include "SubsystemCommands.h"

#include <tarnwick/CommandHandlers.h>

namespace app {

/// The commands of queries: the SQL editor.
class QueryCommands : public SubsystemCommands
{
public:
    /// parent: of the dialogs.
    QueryCommands(ProjectSession &session, QWidget *parent)
        : SubsystemCommands(session, parent)
    {
    }
    void bind(tarnwick::CommandHandlers &handlers);

    /// The SQL editor. file: a query file that it opens; empty for none.
    void openSqlEditor(const QString &file = {});
};

} // namespace app

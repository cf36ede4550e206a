#pragma once
#include "PlanCommands.h"
#include "QueryCommands.h"
#include "ResultCommands.h"
#include "TubeCommands.h"

namespace app {

/// The commands that open the dialogs of the subsystems: results, queries, plans, and what is known of a tube.
class DialogCommands
{
public:
    /// parent: of the dialogs.
    DialogCommands(ProjectSession &session, TubeNotes &notes, QWidget *parent)
        : m_results(session, parent)
        , m_queries(session, parent)
        , m_plans(session, parent)
        , m_tubes(session, notes, parent)
    {
    }

    void bind(tarnwick::CommandHandlers &handlers)
    {
        m_results.bind(handlers);
        m_queries.bind(handlers);
        m_plans.bind(handlers);
    }
    /// The dialogs that ask for files; must outlive this object.
    void setFileDialogs(tarnwick::FileDialogs *dialogs)
    {
        m_results.setFileDialogs(dialogs);
        m_queries.setFileDialogs(dialogs);
        m_plans.setFileDialogs(dialogs);
    }
    PlanCommands &plans() { return m_plans; }
    QueryCommands &queries() { return m_queries; }
    ResultCommands &results() { return m_results; }
    void showTube(int tube) { m_tubes.show(tube); }

private:
    ResultCommands m_results;
    QueryCommands m_queries;
    PlanCommands m_plans;
    TubeCommands m_tubes;
};

} // namespace app

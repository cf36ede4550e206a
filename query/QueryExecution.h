#pragma once
#include "QueryResult.h"

namespace query {

/// What executing a statement came to.
struct Execution
{
    enum class Outcome {
        Rows,      ///< a select: the result holds its rows
        Changed,   ///< an action was carried out
        Cancelled, ///< the parameters were refused, or the user stopped it; nothing was done
        Failed     ///< reported already; nothing was done
    };

    Outcome outcome = Outcome::Failed;
    int affected = 0; ///< rows changed by an action
    double seconds = -1;
};

/// Executes a statement as the editor does: a statement that returns rows fills the result; an action is carried out,
/// with its parameters resolved first. An engine exception is reported (1069) with its place in the text. Without a
/// connection nothing is done but the warning.
Execution executeStatement(db::DatabaseSession &session, QueryContext &context, const QString &name, const QString &sql,
                           QueryResult &result, tarnwick::Progress *progress = nullptr);

/// The editor's message line and second field after an execution.
struct ExecutionStatus
{
    QString line;    ///< "Execute time=%.3f sec." or "Cancelled."
    QString entries; ///< "%D Entries", empty when nothing was run
};
ExecutionStatus executionStatus(const QueryResult &result);

} // namespace query

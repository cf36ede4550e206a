#pragma once
#include "QueryResult.h"

namespace query {

/// Outcome of executing a statement.
struct Execution
{
    enum class Outcome {
        Rows,      ///< a select statement: the result holds its rows
        Changed,   ///< an action query was executed
        Cancelled, ///< the user refused the parameters or stopped it; nothing was changed
        Failed     ///< the error was reported; nothing was changed
    };

    Outcome outcome = Outcome::Failed;
    int affected = 0;            ///< rows changed by an action query
    double seconds = -1;         ///< of the last statement
    dao::SourceRange where = {}; ///< of a failure, in the statement's text, if its place is known
};

/// Executes a statement as the SQL editor does. Rows go into the result; an action query is executed after its
/// parameters were resolved, and the result's change listener is told about it. An engine exception is reported (1069)
/// with its place in the text. Without a connection only the warning is shown.
Execution executeStatement(db::DatabaseSession &session, QueryContext &context, const QString &name, const QString &sql,
                           QueryResult &result, tarnwick::Progress *progress = nullptr);

/// If inserted rows of the result are not stored yet, asks whether they are given up. Returns false if not.
bool askToDropRows(const QueryResult &result, tarnwick::UserPrompts &prompts);

/// Text of the editor's message line and of the field beside it, after an execution that has not failed.
struct ExecutionStatus
{
    QString line; ///< "Execute time=%.3f sec.", or "Cancelled." if nothing was done
    QString
        entries; ///< "%D Entries", or the number of rows that an action query has changed; empty if nothing was done
};
ExecutionStatus executionStatus(const Execution &execution, const QueryResult &result);

} // namespace query

#include "QueryExecution.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <QElapsedTimer>
#include <tarnwick/Failures.h>

namespace query {

namespace {

Execution runAction(db::DatabaseSession &session, QueryContext &context, const QString &name, dao::QueryDef &query,
                    QueryResult &result, tarnwick::Progress *progress)
{
    if (!ParameterResolver(context, session.prompts()).resolve(name, query))
        return {Execution::Outcome::Cancelled};
    QElapsedTimer timer;
    timer.start();
    const QueryResult::ReadPause pause(result);
    const dao::ProgressScope stoppable(session.database(), progress);
    Execution done{Execution::Outcome::Changed};
    done.affected = query.execute();
    constexpr double kNanoseconds = 1e9;
    done.seconds = double(timer.nsecsElapsed()) / kNanoseconds;
    return done;
}

} // namespace

Execution executeStatement(db::DatabaseSession &session, QueryContext &context, const QString &name, const QString &sql,
                           QueryResult &result, tarnwick::Progress *progress)
{
    if (!db::checkConnected(session))
        return {};
    Execution execution;
    const auto run = [&] {
        dao::QueryDef query(session.database(), sql);
        if (!query.returnsRows())
            execution = runAction(session, context, name, query, result, progress);
        else if (result.run(name, query, progress))
            execution = {Execution::Outcome::Rows, 0, result.elapsed()};
        else
            execution = {Execution::Outcome::Cancelled};
    };
    if (attemptCancellable(session.prompts(), run, messages::kExecute) == tarnwick::Outcome::Cancelled)
        execution = {Execution::Outcome::Cancelled};
    return execution;
}

ExecutionStatus executionStatus(const QueryResult &result)
{
    if (result.elapsed() <= 0)
        return {QString::fromUtf16(messages::kCancelled.text), {}};
    return {tarnwick::format(messages::kExecuteTime.text, result.elapsed()),
            tarnwick::format(messages::kEntries.text, result.rowCount())};
}

} // namespace query

#include "QueryExecution.h"

#include "Messages.h"

#include <dao/ProgressScope.h>
#include <QElapsedTimer>
#include <tarnwick/Failures.h>

namespace query {

using namespace Qt::StringLiterals;

namespace {

Execution ended(Execution::Outcome outcome, int affected = 0, double seconds = -1)
{
    Execution execution;
    execution.outcome = outcome;
    execution.affected = affected;
    execution.seconds = seconds;
    return execution;
}

Execution runAction(db::DatabaseSession &session, QueryContext &context, const QString &name, dao::QueryDef &query,
                    QueryResult &result, tarnwick::Progress *progress)
{
    if (!ParameterResolver(context, session.prompts()).resolve(name, query))
        return ended(Execution::Outcome::Cancelled);
    QElapsedTimer timer;
    timer.start();
    const QueryResult::ReadPause pause(result);
    const dao::ProgressScope stoppable(session.database(), progress);
    Change change(result.changeListener());
    if (!change.isAllowed())
        return {};
    const int affected = query.execute();
    change.done(query.sql(), affected);
    constexpr double kNanoseconds = 1e9;
    return ended(Execution::Outcome::Changed, affected, double(timer.nsecsElapsed()) / kNanoseconds);
}

} // namespace

Execution executeStatement(db::DatabaseSession &session, QueryContext &context, const QString &name, const QString &sql,
                           QueryResult &result, tarnwick::Progress *progress)
{
    if (!db::checkConnected(session))
        return {};
    Execution execution;
    const auto run = [&] {
        try {
            dao::QueryDef query(session.database(), sql);
            if (!query.returnsRows())
                execution = runAction(session, context, name, query, result, progress);
            else if (askToDropRows(result, session.prompts()) && result.run(name, query, progress))
                execution = ended(Execution::Outcome::Rows, 0, result.elapsed());
            else
                execution = ended(Execution::Outcome::Cancelled);
        } catch (const dao::DaoException &exception) {
            execution.where = exception.where(); // reported below
            throw;
        }
    };
    if (attemptCancellable(session.prompts(), run, messages::kExecute) == tarnwick::Outcome::Cancelled)
        execution = ended(Execution::Outcome::Cancelled);
    return execution;
}

bool askToDropRows(const QueryResult &result, tarnwick::UserPrompts &prompts)
{
    constexpr int kMostShown = 20;
    QStringList lines;
    for (const qint64 row : result.unfinishedRows().mid(0, kMostShown)) {
        const QString lacking = result.lackingFields(row).join(u", "_s);
        lines.append(u"row %1"_s.arg(row + 1) + (lacking.isEmpty() ? QString() : u": no value for "_s + lacking));
    }
    return lines.isEmpty() || prompts.question(tarnwick::Buttons::NoYes, messages::kAskDropRows, lines.join(u'\n')) ==
                                  tarnwick::Answer::Yes;
}

ExecutionStatus executionStatus(const Execution &execution, const QueryResult &result)
{
    const bool isChange = execution.outcome == Execution::Outcome::Changed;
    if (!isChange && (execution.outcome != Execution::Outcome::Rows || execution.seconds <= 0))
        return {QString::fromUtf16(messages::kCancelled.text), {}};
    return {tarnwick::format(messages::kExecuteTime.text, execution.seconds),
            isChange ? tarnwick::format(messages::kRowsChanged.text, execution.affected)
                     : tarnwick::format(messages::kEntries.text, result.rowCount())};
}

} // namespace query

#pragma once
#include "QuerySource.h"

#include <query/QueryContext.h>

namespace db {
class DatabaseSession;
}

namespace query {
class QueryResult;
}

namespace plans {

/// The records of a result that is shown. The progress can cancel reading them; it may be null. Both must outlive the
/// records.
std::unique_ptr<QueryRecords> recordsOf(query::QueryResult &result, tarnwick::Progress *progress = nullptr);

/// Query source of the program: runs queries on the project database and stores symbols in the query history.
class ProjectQueries : public QuerySource
{
public:
    /// Both must outlive this object.
    ProjectQueries(db::DatabaseSession &session, query::QueryContext &context)
        : m_session(session)
        , m_context(context)
    {
    }

    bool isReady() const override;
    std::unique_ptr<QueryRecords> run(const QString &name, const QString &sql) override;
    void setQuiet(bool quiet) override { m_context.quiet = quiet; }
    void setProgress(tarnwick::Progress *progress) override { m_progress = progress; }
    std::optional<ellery::TubeMark> rememberedMark(const QString &name) const override;
    void rememberMark(const QString &name, const ellery::TubeMark &mark) override;

private:
    db::DatabaseSession &m_session;
    query::QueryContext &m_context;
    tarnwick::Progress *m_progress = nullptr;
};

} // namespace plans

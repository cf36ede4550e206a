#include "ProjectQueries.h"

#include <query/Messages.h>
#include <query/QueryResult.h>
#include <tarnwick/Failures.h>

namespace plans {

namespace {

/// The records of a result.
class ResultRecords : public QueryRecords
{
public:
    /// own: the result, if it lives no longer than its records.
    ResultRecords(query::QueryResult &result, tarnwick::Progress *progress,
                  std::unique_ptr<query::QueryResult> own = nullptr)
        : m_own(std::move(own))
        , m_result(result)
        , m_progress(progress)
    {
    }

    int columnCount() const override { return m_result.columnCount(); }
    QString columnName(int column) const override { return m_result.column(column).name; }
    int rowCount() const override { return int(m_result.rowCount()); }
    dao::Value value(int row, int column) const override
    {
        constexpr int kCellsBetweenLooks = 256;
        if (m_progress && ++m_cells % kCellsBetweenLooks == 0 && m_progress->cancelled())
            throw tarnwick::Cancelled();
        return m_result.value(row, column);
    }
    void setColours(int row, const tarnwick::RowColours &colours, const QString &reason) override
    {
        m_result.setColours(row, colours, reason);
    }

private:
    std::unique_ptr<query::QueryResult> m_own;
    query::QueryResult &m_result;
    tarnwick::Progress *m_progress;
    mutable int m_cells = 0;
};

} // namespace

std::unique_ptr<QueryRecords> recordsOf(query::QueryResult &result, tarnwick::Progress *progress)
{
    return std::make_unique<ResultRecords>(result, progress);
}

bool ProjectQueries::isReady() const
{
    return m_session.isOpen();
}

std::unique_ptr<QueryRecords> ProjectQueries::run(const QString &name, const QString &sql)
{
    auto result = std::make_unique<query::QueryResult>(m_session, m_context);
    bool hasRun = false;
    const auto execute = [&] { hasRun = result->run(name, sql, m_progress); };
    tarnwick::attempt(m_session.prompts(), execute, query::messages::kExecute);
    if (!hasRun)
        return nullptr;
    query::QueryResult &records = *result;
    return std::make_unique<ResultRecords>(records, m_progress, std::move(result));
}

std::optional<ellery::TubeMark> ProjectQueries::rememberedMark(const QString &name) const
{
    m_context.history.refresh(m_context.roots);
    const query::QueryHistoryList::Entry *entry = m_context.history.find(name);
    if (!entry || entry->mark.isOpen())
        return std::nullopt;
    return entry->mark;
}

void ProjectQueries::rememberMark(const QString &name, const ellery::TubeMark &mark)
{
    m_context.history.setMark(name, mark);
    try {
        m_context.history.storeChanges(m_context.roots);
    } catch (const tarnwick::Error &error) {
        m_session.prompts().status(query::messages::kStoringHistory, error.text());
    }
}

} // namespace plans

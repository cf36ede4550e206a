#include "ProjectQueries.h"

#include <query/Messages.h>
#include <query/QueryResult.h>
#include <tarnwick/Failures.h>

namespace plans {

namespace {

class ResultRecords : public QueryRecords
{
public:
    ResultRecords(db::DatabaseSession &session, query::QueryContext &context, tarnwick::Progress *progress)
        : result(session, context)
        , m_progress(progress)
    {
    }

    query::QueryResult result;

    int columnCount() const override { return result.columnCount(); }
    QString columnName(int column) const override { return result.column(column).name; }
    int rowCount() const override { return int(result.rowCount()); }
    dao::Value value(int row, int column) const override
    {
        constexpr int kCellsBetweenLooks = 256;
        if (m_progress && ++m_cells % kCellsBetweenLooks == 0 && m_progress->cancelled())
            throw tarnwick::Cancelled();
        return result.value(row, column);
    }
    void setColours(int row, const tarnwick::RowColours &colours) override { result.setColours(row, colours); }

private:
    tarnwick::Progress *m_progress;
    mutable int m_cells = 0;
};

} // namespace

bool ProjectQueries::isReady() const
{
    return m_session.isOpen();
}

std::unique_ptr<QueryRecords> ProjectQueries::run(const QString &name, const QString &sql)
{
    auto records = std::make_unique<ResultRecords>(m_session, m_context, m_progress);
    bool hasRun = false;
    const auto execute = [&] { hasRun = records->result.run(name, sql, m_progress); };
    tarnwick::attempt(m_session.prompts(), execute, query::messages::kExecute);
    if (!hasRun)
        records.reset();
    return records;
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

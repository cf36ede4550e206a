#include "QueryDef.h"

#include "PlanExecution.h"

#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.QueryDef"_s;

} // namespace

// The schema is not read here: a program can create a definition before the tables exist.
QueryDef::QueryDef(Database &database, const QString &sql)
    : m_impl(std::make_unique<QueryDefImpl>(database.m_impl, sql))
{
    m_impl->db->requireOpen();
    m_impl->parse();
}

QueryDef::QueryDef(std::unique_ptr<QueryDefImpl> impl)
    : m_impl(std::move(impl))
{
}

QueryDef QueryDef::stored(Database &database, QStringView name)
{
    return QueryDef(std::make_unique<QueryDefImpl>(database.m_impl, database.query(name).sql));
}

QueryDef::~QueryDef() = default;
QueryDef::QueryDef(QueryDef &&) noexcept = default;
QueryDef &QueryDef::operator=(QueryDef &&) noexcept = default;

QString QueryDef::sql() const
{
    return m_impl->sql;
}

// Compiles again if the schema has changed since the last call.
const sql::CompiledStatement &QueryDef::compiled() const
{
    store::SourceScope scope(m_impl->db->connection, kSource);
    return m_impl->ensureCompiled();
}

bool QueryDef::returnsRows() const
{
    return compiled().returnsRows();
}

int QueryDef::parameterCount() const
{
    return int(compiled().parameters.size());
}

const sql::Parameter &QueryDef::parameter(int index) const
{
    const sql::CompiledStatement &statement = compiled();
    if (index < 0 || index >= statement.parameters.size())
        throw store::engineError(error::ItemNotFound, kSource);
    return statement.parameters[index];
}

void QueryDef::setParameter(int index, const Value &value)
{
    m_impl->setParameter(index, value, kSource);
}

void QueryDef::setParameter(const QString &name, const Value &value)
{
    compiled();
    m_impl->setParameter(m_impl->indexOfParameter(name), value, kSource);
}

Value QueryDef::parameterValue(int index) const
{
    parameter(index);
    return m_impl->parameters[index];
}

int QueryDef::fieldCount() const
{
    store::SourceScope scope(m_impl->db->connection, kSource);
    return int(m_impl->describedPlan().columns.size());
}

const FieldInfo &QueryDef::field(int index) const
{
    if (index < 0 || index >= fieldCount())
        throw store::engineError(error::ItemNotFound, kSource);
    return m_impl->describedPlan().columns[index].info;
}

int QueryDef::execute()
{
    return executeStatement(*m_impl);
}

} // namespace dao

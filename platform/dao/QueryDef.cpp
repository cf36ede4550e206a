#include "QueryDef.h"

#include "DatabaseImpl.h"
#include "PlanExecution.h"
#include "QueryDefImpl.h"

#include <dao/sql/Compiler.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/ValueBinding.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString source = u"DAO.QueryDef"_s;

} // namespace

QueryDef::Impl::Impl(Database &owner, std::shared_ptr<DatabaseImpl> ownerImpl, const QString &text)
    : database(&owner)
    , db(std::move(ownerImpl))
    , sql(text)
{
}

const sql::CompiledStatement &QueryDef::Impl::ensureCompiled()
{
    db->prepareStatement();
    if (!compiled || generation != db->catalog.generation())
        compile();
    return *compiled;
}

void QueryDef::Impl::compileForRun()
{
    ensureCompiled();
    if (compiled->dependsOnData && !fitsData)
        compile();
    fitsData = false;
}

void QueryDef::Impl::compile()
{
    if (!syntax)
        syntax = sql::checkSyntax(sql);
    sql::CompiledStatement fresh = compileIn(*db, sql, syntax);
    QList<Value> values(fresh.parameters.size());
    for (qsizetype i = 0; compiled && i < fresh.parameters.size(); ++i) {
        const int old = indexOfParameter(fresh.parameters[i].name);
        if (old >= 0)
            values[i] = parameters[old];
    }
    steps.clear();
    parameters = values;
    compiled = std::move(fresh);
    described.reset();
    generation = db->catalog.generation();
    fitsData = true;
}

const sql::SelectPlan &QueryDef::Impl::describedPlan()
{
    static const sql::SelectPlan none;
    const auto *plan = std::get_if<sql::SelectPlan>(&ensureCompiled().plan);
    if (!plan)
        return none;
    const bool complete = std::ranges::none_of(parameters, &Value::isEmpty);
    if (!plan->crosstab || !complete)
        return *plan;
    if (!described || describedAt != db->changeStamp()) {
        described = sql::withHeadings(*plan, readHeadings(*db, *plan->crosstab, parameters));
        describedAt = db->changeStamp();
    }
    return *described;
}

int QueryDef::Impl::indexOfParameter(QStringView name) const
{
    for (qsizetype i = 0; compiled && i < compiled->parameters.size(); ++i) {
        if (name.compare(compiled->parameters[i].name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

void QueryDef::Impl::setParameter(int index, const Value &value, const QString &from)
{
    const sql::CompiledStatement &statement = ensureCompiled();
    if (index < 0 || index >= statement.parameters.size())
        throw store::engineError(error::ItemNotFound, from);
    const Value converted = convertValue(value, statement.parameters[index].type);
    if (converted.isEmpty())
        throw store::engineError(error::ConversionFailed, from);
    parameters[index] = converted;
    described.reset();
}

void QueryDef::Impl::requireParameters(const QString &from)
{
    const auto missing =
        std::count_if(parameters.begin(), parameters.end(), [](const Value &v) { return v.isEmpty(); });
    if (missing > 0)
        throw store::engineError(error::TooFewParameters, from, {QString::number(missing)});
}

QList<sql::CrosstabHeading> readHeadings(DatabaseImpl &db, const sql::CrosstabPlan &crosstab,
                                         const QList<Value> &parameters)
{
    store::Statement values(db.connection, crosstab.valuesSql, store::Access::User);
    for (int i = 0; i < qMin(values.parameterCount(), int(parameters.size())); ++i)
        store::bindValue(values, i + 1, parameters[i]);
    QList<sql::CrosstabHeading> headings;
    // More than a table holds are as good as any number of them.
    while (headings.size() <= sql::maxCrosstabColumns && values.step())
        headings.append({store::columnValue(values, 0, DataType::Text).text(),
                         store::columnValue(values, 1, DataType::Text).text()});
    return headings;
}

sql::CompiledStatement compileIn(DatabaseImpl &db, const QString &text, const sql::SyntaxTree &syntax)
{
    return sql::compile(db.catalog, text, syntax ? syntax : sql::checkSyntax(text),
                        [&db](const sql::CrosstabPlan &crosstab) { return readHeadings(db, crosstab); });
}

QueryDef::QueryDef(Database &database, const QString &sql)
    : m_impl(std::make_unique<Impl>(database, database.m_impl, sql))
{
    m_impl->db->requireOpen();
    m_impl->syntax = sql::checkSyntax(sql);
}

QueryDef::QueryDef(std::unique_ptr<Impl> impl)
    : m_impl(std::move(impl))
{
}

QueryDef QueryDef::stored(Database &database, QStringView name)
{
    return QueryDef(std::make_unique<Impl>(database, database.m_impl, database.query(name).sql));
}

QueryDef::~QueryDef() = default;
QueryDef::QueryDef(QueryDef &&) noexcept = default;
QueryDef &QueryDef::operator=(QueryDef &&) noexcept = default;

Database &QueryDef::database() const
{
    return *m_impl->database;
}

QString QueryDef::sql() const
{
    return m_impl->sql;
}

const sql::CompiledStatement &QueryDef::compiled() const
{
    store::SourceScope scope(m_impl->db->connection, source);
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
        throw store::engineError(error::ItemNotFound, source);
    return statement.parameters[index];
}

void QueryDef::setParameter(int index, const Value &value)
{
    m_impl->setParameter(index, value, source);
}

void QueryDef::setParameter(const QString &name, const Value &value)
{
    compiled();
    m_impl->setParameter(m_impl->indexOfParameter(name), value, source);
}

Value QueryDef::parameterValue(int index) const
{
    parameter(index);
    return m_impl->parameters[index];
}

int QueryDef::fieldCount() const
{
    store::SourceScope scope(m_impl->db->connection, source);
    return int(m_impl->describedPlan().columns.size());
}

const FieldInfo &QueryDef::field(int index) const
{
    if (index < 0 || index >= fieldCount())
        throw store::engineError(error::ItemNotFound, source);
    return m_impl->describedPlan().columns[index].info;
}

int QueryDef::execute()
{
    store::SourceScope scope(m_impl->db->connection, source);
    if (m_impl->ensureCompiled().returnsRows())
        throw store::engineError(error::CannotExecuteSelect, source);
    m_impl->compileForRun();
    m_impl->requireParameters(source);
    return PlanExecution(*m_impl->database, *m_impl->db, *m_impl).run();
}

} // namespace dao

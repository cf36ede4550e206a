#include "QueryDefImpl.h"

#include <dao/store/ErrorTranslation.h>
#include <dao/store/ValueBinding.h>

#include <algorithm>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.QueryDef"_s;

/// While it exists, statements of the connection are stopped after kLongestMilliseconds or when the user cancels.
class SearchLimit : public tarnwick::Progress
{
public:
    explicit SearchLimit(store::Connection &connection)
        : m_connection(connection)
        , m_outer(connection.progress())
    {
        m_timer.start();
        connection.clearCancel();
        connection.setProgress(this);
    }
    ~SearchLimit() override
    {
        m_connection.setProgress(m_outer);
        m_connection.clearCancel();
    }
    SearchLimit(const SearchLimit &) = delete;
    SearchLimit &operator=(const SearchLimit &) = delete;

    bool cancelled() override
    {
        constexpr qint64 kLongestMilliseconds = 5000;
        return m_timer.elapsed() > kLongestMilliseconds || (m_outer && m_outer->cancelled());
    }
    void waiting() override
    {
        if (m_outer)
            m_outer->waiting();
    }

private:
    store::Connection &m_connection;
    tarnwick::Progress *m_outer;
    QElapsedTimer m_timer;
};

} // namespace

QueryDefImpl::QueryDefImpl(std::shared_ptr<DatabaseImpl> owner, const QString &text)
    : db(std::move(owner))
    , sql(text)
{
}

const sql::CompiledStatement &QueryDefImpl::ensureCompiled()
{
    db->prepareStatement();
    if (!compiled || isStale || generation != db->catalog.generation())
        compile();
    return *compiled;
}

// A statement that reads a cross table fits only the data for which it was compiled.
void QueryDefImpl::compileForRun()
{
    ensureCompiled();
    if (compiled->dependsOnData && !fitsData)
        compile();
    fitsData = false;
}

void QueryDefImpl::parse()
{
    if (!syntax)
        syntax = sql::checkSyntax(sql);
}

void QueryDefImpl::compile()
{
    parse();
    sql::CompiledStatement fresh = sql::compile(db->catalog, sql, syntax, headingReader());
    // Keeps the values of parameters that still exist after a change of the schema, by name.
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
    called.reset();
    generation = db->catalog.generation();
    fitsData = true;
    isStale = false;
}

sql::HeadingReader QueryDefImpl::headingReader() const
{
    return [this](const sql::CrosstabPlan &crosstab,
                  const QList<sql::Parameter> &wanted) -> std::optional<QList<sql::CrosstabHeading>> {
        QList<Value> values;
        for (const sql::Parameter &parameter : wanted)
            values.append(parameters.value(indexOfParameter(parameter.name)));
        if (crosstab.valuesNeedParameters && std::ranges::any_of(values, &Value::isEmpty))
            return std::nullopt;
        return db->readHeadings(crosstab, values);
    };
}

// A cross table is read again only after a change of the data, because describing it costs a query.
const sql::SelectPlan &QueryDefImpl::describedPlan()
{
    static const sql::SelectPlan none;
    const auto *plan = std::get_if<sql::SelectPlan>(&ensureCompiled().plan);
    if (!plan) {
        if (!called)
            called = calledQuery();
        return called ? called->describedPlan() : none;
    }
    const bool complete = std::ranges::none_of(parameters, &Value::isEmpty);
    if (!plan->crosstab || !complete)
        return *plan;
    if (!described || describedAt != db->changeStamp()) {
        described = sql::withHeadings(*plan, db->readHeadings(*plan->crosstab, parameters));
        describedAt = db->changeStamp();
    }
    return *described;
}

std::unique_ptr<QueryDefImpl> QueryDefImpl::calledQuery()
{
    const auto *plan = std::get_if<sql::ExecutePlan>(&ensureCompiled().plan);
    if (!plan || !plan->returnsRows)
        return nullptr;
    std::unique_ptr<QueryDefImpl> query = queryOf(*plan);
    query->isCalled = true;
    if (std::ranges::any_of(parameters, &Value::isEmpty))
        return query;
    const QList<Value> arguments = argumentsOf(*plan);
    for (qsizetype i = 0; i < arguments.size(); ++i)
        query->setParameter(int(i), arguments[i], kSource);
    return query;
}

std::unique_ptr<QueryDefImpl> QueryDefImpl::queryOf(const sql::ExecutePlan &plan) const
{
    const QueryInfo *stored = db->catalog.findQuery(plan.query);
    if (!stored)
        throw store::engineError(error::ItemNotFound, u"DAO.QueryDefs"_s);
    return std::make_unique<QueryDefImpl>(db, stored->sql);
}

// SQLite evaluates the arguments, because they can be any expression over parameters.
QList<Value> QueryDefImpl::argumentsOf(const sql::ExecutePlan &plan) const
{
    QList<Value> values;
    for (const QString &argument : plan.arguments) {
        store::Statement statement(db->connection, u"SELECT "_s + argument, store::Access::User);
        for (int i = 0; i < qMin(statement.parameterCount(), int(parameters.size())); ++i)
            store::bindValue(statement, i + 1, parameters[i]);
        statement.step();
        values.append(store::columnValue(statement, 0, DataType::Unknown));
    }
    return values;
}

int QueryDefImpl::indexOfParameter(QStringView name) const
{
    for (qsizetype i = 0; compiled && i < compiled->parameters.size(); ++i) {
        if (name.compare(compiled->parameters[i].name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

void QueryDefImpl::setParameter(int index, const Value &value, const QString &from)
{
    // Other values can make names parameters. The index is that of the list that the caller knows.
    const bool wasStale = std::exchange(isStale, false);
    const sql::CompiledStatement &statement = ensureCompiled();
    isStale = wasStale;
    if (index < 0 || index >= statement.parameters.size())
        throw store::engineError(error::ItemNotFound, from);
    const Value converted = convertValue(value, statement.parameters[index].type);
    if (converted.isEmpty())
        throw store::engineError(error::ConversionFailed, from);
    parameters[index] = converted;
    isStale = isStale || statement.dependsOnValues;
    described.reset();
    called.reset();
}

void QueryDefImpl::requireParameters(const QString &from)
{
    const auto missing = std::ranges::count_if(parameters, &Value::isEmpty);
    const auto firstMissing = std::ranges::find_if(parameters, &Value::isEmpty) - parameters.begin();
    if (missing == 0)
        return;
    QStringList hints;
    for (qsizetype i = 0; i < parameters.size(); ++i) {
        const sql::Parameter &parameter = compiled->parameters[i];
        if (!parameters[i].isEmpty())
            continue;
        if (!parameter.suggestion.isEmpty())
            hints.append(u"Did you mean '%1'?"_s.arg(parameter.suggestion));
        if (parameter.bareText)
            hints.append(u"If %1 is a text, it needs quotes: '%1'."_s.arg(parameter.name));
    }
    const DaoException error = store::engineError(error::TooFewParameters, from, {QString::number(missing)});
    // For one parameter its place is reported; for several the hints of the first ones.
    constexpr qsizetype kMaxHints = 3;
    const SourceRange where = missing == 1 ? compiled->parameters[firstMissing].where : SourceRange();
    throw DaoException(error.number(), error.source(), error.description(), where)
        .withHint(hints.first(qMin(hints.size(), kMaxHints)).join(u' '));
}

// SQLite reports no position for errors of functions and arithmetic, so the statement is run again in a form that does.
// Only errors that a calculation can raise are searched: others have their place already or have none.
void QueryDefImpl::rethrowWithPlace(const DaoException &exception)
{
    if (isCalled)
        throw DaoException(exception.number(), exception.source(), exception.description()).withHint(exception.hint());
    static constexpr int kCalculationErrors[] = {
        error::InvalidProcedureCall, error::Overflow,         error::DivisionByZero,
        error::TypeMismatch,         error::InvalidUseOfNull, error::SubqueryRows,
        error::NumericOverflow,      error::ConversionFailed, error::FieldTooSmall};
    const bool isCalculation =
        std::ranges::find(kCalculationErrors, exception.number()) != std::end(kCalculationErrors);
    if (exception.where().isValid() || !isCalculation)
        throw exception;
    if (const std::optional<SourceRange> place = placeOf(exception))
        throw DaoException(exception.number(), exception.source(), exception.description(), *place)
            .withHint(exception.hint());
    throw exception;
}

// Runs the statement again in a form that reports the place of a failed expression. Stops after a time limit.
std::optional<SourceRange> QueryDefImpl::placeOf(const DaoException &exception)
{
    const SearchLimit limit(db->connection);
    try {
        const QString text = sql::placesSql(db->catalog, sql, syntax ? syntax : sql::checkSyntax(sql), headingReader());
        if (text.isEmpty())
            return std::nullopt;
        store::Statement statement(db->connection, text, store::Access::User);
        for (int i = 0; i < qMin(statement.parameterCount(), int(parameters.size())); ++i)
            store::bindValue(statement, i + 1, parameters[i]);
        while (statement.step()) {
        }
    } catch (const DaoException &found) {
        if (found.number() == exception.number() && found.where().length > 0)
            return SourceRange::of(sql, found.where().start, found.where().length);
    } catch (const tarnwick::Cancelled &) {
        // Without a place the error is still correct, so failures of the search are ignored.
    }
    return std::nullopt;
}

} // namespace dao

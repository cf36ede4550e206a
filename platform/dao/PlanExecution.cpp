#include "PlanExecution.h"

#include "CancelTriggers.h"

#include <dao/store/ActionSteps.h>
#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/ValueBinding.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.QueryDef"_s;

/// The VALUES term for a field of a table that is created from a query. Computed values must be converted, because they
/// can lie outside the range of their type.
QString placeFor(const FieldInfo &field, bool computed)
{
    switch (field.type) {
    case DataType::Boolean: // a Boolean field holds no Null, but an outer join can return one
        return u"coalesce(?, 0)"_s;
    case DataType::Date:
        return computed ? u"jet_to_date(?)"_s : u"?"_s;
    case DataType::Single:
    case DataType::Double:
        return computed ? u"jet_to_double(?)"_s : u"?"_s;
    case DataType::Text:
        return computed && field.size > 0 ? u"jet_to_text(?, %1)"_s.arg(field.size) : u"?"_s;
    default:
        return u"?"_s;
    }
}

} // namespace

PlanExecution::PlanExecution(QueryDefImpl &query)
    : m_db(*query.db)
    , m_query(query)
{
}

int PlanExecution::run()
{
    if (m_db.connection.isReadOnly())
        fail(error::ReadOnly);
    m_db.connection.clearCancel();
    return std::visit([this](const auto &plan) { return carryOut(plan); }, m_query.compiled->plan);
}

void PlanExecution::fail(int number, const QStringList &arguments) const
{
    throw store::engineError(number, m_db.connection.source(), arguments);
}

const TableInfo &PlanExecution::table(const QString &name) const
{
    const TableInfo *table = m_db.catalog.findTable(name);
    if (!table)
        fail(error::TableDoesNotExist, {name});
    return *table;
}

void PlanExecution::bindParameters(store::Statement &statement) const
{
    const auto count = qMin<qsizetype>(statement.parameterCount(), m_query.parameters.size());
    for (int i = 0; i < int(count); ++i)
        store::bindValue(statement, i + 1, m_query.parameters[i]);
}

int PlanExecution::carryOut(const sql::SelectPlan &)
{
    fail(error::CannotExecuteSelect);
}

// Chooses one of the two forms of a change. Inside the program's transaction an interrupt would undo the whole
// transaction, so the cancellable steps run there; they call dao_cancelled() for each row. The plain steps let SQLite
// do the whole change in one statement, which is faster.
int PlanExecution::carryOut(const sql::ActionPlan &plan)
{
    store::Connection &connection = m_db.connection;
    const bool polls = connection.mustPollForCancel() && !plan.cancellableSteps.isEmpty();
    // If rows are materialised first, they are also sorted in small pieces, so that the user can stop the sort.
    const bool materialises = connection.progress() && plan.cancellableSteps.size() > 1;
    const auto &steps = polls || materialises ? plan.cancellableSteps : plan.steps;
    const bool alone = plan.steps.size() == 1 && !polls && !materialises;
    // Undoing a statement can end statements that are still reading, so open readers are secured first.
    if (!alone || connection.progress())
        m_db.secureReaders();
    // SQLite undoes a single failed statement itself; it needs no savepoint.
    if (alone)
        return runAlone(plan.steps.first());
    const CancelTriggers triggers(connection, polls ? withCascadeTargets(plan.tables) : QStringList());
    store::Savepoint savepoint(connection);
    const qint64 affected = store::runSteps(connection, steps, store::Access::User,
                                            [this](store::Statement &statement) { bindParameters(statement); });
    connection.throwIfCancelled();
    savepoint.release();
    return int(affected);
}

// The most frequent case, prepared once per query definition, so that a program can execute it in a loop.
int PlanExecution::runAlone(const sql::ActionPlan::Step &step)
{
    if (m_query.steps.empty())
        m_query.steps.emplace_back(m_db.connection, step.sql, store::Access::User);
    store::Statement &statement = m_query.steps.front();
    bindParameters(statement);
    statement.run();
    return step.countsRows ? int(m_db.connection.changes()) : 0;
}

/// Returns the tables and all tables that cascades of their relations change.
QStringList PlanExecution::withCascadeTargets(const QStringList &tables) const
{
    QStringList reached = tables;
    for (qsizetype i = 0; i < reached.size(); ++i) {
        for (const RelationInfo &relation : m_db.catalog.relations()) {
            if ((relation.attributes & (DeleteCascade | UpdateCascade)) &&
                relation.table.compare(reached[i], Qt::CaseInsensitive) == 0 &&
                !reached.contains(relation.foreignTable, Qt::CaseInsensitive))
                reached.append(relation.foreignTable);
        }
    }
    return reached;
}

int PlanExecution::carryOut(const sql::SelectIntoPlan &plan)
{
    qint64 rows = 0;
    m_db.editor.asOne([&] {
        m_db.editor.createTable(plan.table);
        // Copies row by row: the SELECT can then be interrupted without SQLite rolling back the whole transaction.
        store::Statement select(m_db.connection, plan.select.fullSql, store::Access::User);
        bindParameters(select);
        QStringList places;
        for (qsizetype i = 0; i < plan.table.fields.size(); ++i)
            places.append(placeFor(plan.table.fields[i], plan.select.columns[i].info.sourceField.isEmpty()));
        rows = store::copyRows(select, m_db.connection, sql::quotedName(plan.table.name), places);
        m_db.connection.throwIfCancelled();
    });
    return int(rows);
}

void PlanExecution::addParts(const QString &tableName, const QList<IndexInfo> &indexes,
                             const QList<RelationInfo> &relations)
{
    for (const IndexInfo &index : indexes)
        m_db.editor.createIndex(tableName, index);
    for (RelationInfo relation : relations) {
        if (relation.name.isEmpty())
            relation.name = freeRelationName(relation);
        m_db.editor.createRelation(relation);
    }
}

/// Builds the name from both table names, with a number appended if that name is in use.
QString PlanExecution::freeRelationName(const RelationInfo &relation) const
{
    const QString plain = relation.table + relation.foreignTable;
    QString name = plain;
    for (int number = 1; m_db.catalog.findRelation(name); ++number)
        name = plain + QString::number(number);
    return name;
}

int PlanExecution::carryOut(const sql::CreateTablePlan &plan)
{
    m_db.editor.asOne([&] {
        m_db.editor.createTable(plan.table, plan.checks);
        addParts(plan.table.name, {}, plan.relations);
    });
    return 0;
}

int PlanExecution::carryOut(const sql::AddFieldPlan &plan)
{
    table(plan.table);
    m_db.editor.asOne([&] {
        m_db.editor.addField(plan.table, plan.field);
        for (const sql::NamedCheck &check : plan.checks)
            m_db.editor.addCheck(plan.table, check);
        addParts(plan.table, plan.indexes, plan.relations);
    });
    return 0;
}

int PlanExecution::carryOut(const sql::AlterFieldPlan &plan)
{
    table(plan.table);
    m_db.editor.alterField(plan.table, plan.field);
    return 0;
}

int PlanExecution::carryOut(const sql::DropFieldPlan &plan)
{
    if (!table(plan.table).field(plan.field))
        fail(error::NoSuchField, {plan.field, plan.table});
    m_db.editor.deleteField(plan.table, plan.field);
    return 0;
}

int PlanExecution::carryOut(const sql::AddConstraintPlan &plan)
{
    table(plan.table);
    m_db.editor.asOne([&] {
        if (!plan.check.condition.isEmpty())
            m_db.editor.addCheck(plan.table, plan.check);
        addParts(plan.table, plan.indexes, plan.relations);
    });
    return 0;
}

// A constraint name is searched among relations, indexes and checks, in this order: each of them can be named in
// CONSTRAINT.
int PlanExecution::carryOut(const sql::DropConstraintPlan &plan)
{
    const TableInfo &owner = table(plan.table);
    const RelationInfo *relation = m_db.catalog.findRelation(plan.name);
    if (relation && relation->foreignTable.compare(owner.name, Qt::CaseInsensitive) == 0)
        m_db.editor.deleteRelation(plan.name);
    else if (owner.index(plan.name))
        m_db.editor.deleteIndex(plan.table, plan.name);
    else if (!m_db.editor.deleteCheck(plan.table, plan.name))
        throw DaoException(error::NoSuchConstraint, m_db.connection.source(),
                           errorText(error::NoSuchConstraint, {plan.name}), plan.where);
    return 0;
}

int PlanExecution::carryOut(const sql::DropTablePlan &plan)
{
    if (m_db.catalog.findQuery(plan.name)) {
        m_db.editor.deleteQuery(plan.name);
    } else {
        table(plan.name);
        m_db.editor.deleteTable(plan.name);
    }
    return 0;
}

int PlanExecution::carryOut(const sql::CreateIndexPlan &plan)
{
    table(plan.table);
    m_db.editor.createIndex(plan.table, plan.index);
    return 0;
}

int PlanExecution::carryOut(const sql::DropIndexPlan &plan)
{
    if (!table(plan.table).index(plan.index))
        fail(error::NoSuchIndex, {plan.index, plan.table});
    m_db.editor.deleteIndex(plan.table, plan.index);
    return 0;
}

int PlanExecution::carryOut(const sql::CreateQueryPlan &plan)
{
    m_db.editor.createQuery(plan.query);
    return 0;
}

int PlanExecution::carryOut(const sql::DropQueryPlan &plan)
{
    m_db.editor.deleteQuery(plan.name);
    return 0;
}

int PlanExecution::carryOut(const sql::ExecutePlan &plan)
{
    const std::unique_ptr<QueryDefImpl> query = m_query.queryOf(plan);
    const QList<Value> arguments = m_query.argumentsOf(plan);
    for (qsizetype i = 0; i < arguments.size(); ++i)
        query->setParameter(int(i), arguments[i], kSource);
    return executeStatement(*query);
}

int executeStatement(QueryDefImpl &query)
{
    store::SourceScope scope(query.db->connection, kSource);
    if (query.ensureCompiled().returnsRows())
        throw store::engineError(error::CannotExecuteSelect, kSource);
    query.compileForRun();
    query.requireParameters(kSource);
    try {
        return PlanExecution(query).run();
    } catch (const DaoException &exception) {
        query.rethrowWithPlace(exception);
    }
}

} // namespace dao

#include "PlanExecution.h"

#include "CancelTriggers.h"

#include <dao/sql/Compiler.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/ValueBinding.h>

using namespace Qt::StringLiterals;

namespace dao {

PlanExecution::PlanExecution(Database &database, DatabaseImpl &db, QueryDef::Impl &query)
    : m_database(database)
    , m_db(db)
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

int PlanExecution::carryOut(const sql::ActionPlan &plan)
{
    store::Connection &connection = m_db.connection;
    const bool undoneWhenCancelled = connection.progress() && connection.inProgramTransaction();
    // A single statement is undone by itself when it fails.
    if (plan.steps.size() == 1 && !undoneWhenCancelled)
        return runSteps(plan);
    CancelTriggers triggers(connection, undoneWhenCancelled ? plan.table : QString());
    store::Savepoint savepoint(connection);
    const int affected = runSteps(plan);
    connection.throwIfCancelled();
    savepoint.release();
    return affected;
}

int PlanExecution::runSteps(const sql::ActionPlan &plan)
{
    // A step may only make sense to the inner engine once the one before has run, so each is prepared in its turn.
    m_query.steps.resize(size_t(plan.steps.size()));
    const bool reusable = plan.steps.size() == 1;
    qint64 affected = 0;
    for (qsizetype i = 0; i < plan.steps.size(); ++i) {
        if (gatherRows(plan.steps[i].sql))
            continue;
        store::Statement &statement = m_query.steps[size_t(i)];
        if (!statement.isValid() || !reusable)
            statement = store::Statement(m_db.connection, plan.steps[i].sql, store::Access::User);
        bindParameters(statement);
        statement.run();
        if (plan.steps[i].countsRows)
            affected += m_db.connection.changes();
        if (!reusable)
            statement = store::Statement();
    }
    return int(affected);
}

// Rows that a change over several tables gathers first: the reading, which is what takes its time, is done by a
// statement that can be interrupted without the inner engine giving up the whole transaction.
bool PlanExecution::gatherRows(const QString &step)
{
    static const QString make = u"CREATE TEMP TABLE "_s;
    static const QString as = u" AS SELECT "_s;
    const qsizetype split = step.indexOf(as);
    if (!step.startsWith(make) || split < 0)
        return false;
    const QString table = step.mid(make.size(), split - make.size());
    store::Statement select(m_db.connection, step.mid(split + 4), store::Access::User);
    bindParameters(select);
    QStringList columns;
    for (int i = 0; i < select.columnCount(); ++i)
        columns.append(select.columnName(i));
    m_db.connection.run(make + table + u" ("_s + columns.join(u", "_s) + u')');
    store::copyRows(select, m_db.connection, u"temp."_s + table);
    return true;
}

int PlanExecution::carryOut(const sql::SelectIntoPlan &plan)
{
    qint64 rows = 0;
    m_db.editor.asOne([&] {
        m_db.editor.createTable(plan.table);
        // Row by row: the reading half can be interrupted without the inner engine giving up the whole transaction.
        store::Statement select(m_db.connection, plan.select.fullSql, store::Access::User);
        bindParameters(select);
        // A Boolean field holds no Null, an outer join may.
        QStringList places;
        for (const FieldInfo &field : plan.table.fields)
            places.append(field.type == DataType::Boolean ? u"coalesce(?, 0)"_s : u"?"_s);
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
    for (const RelationInfo &relation : relations)
        m_db.editor.createRelation(relation);
}

int PlanExecution::carryOut(const sql::CreateTablePlan &plan)
{
    m_db.editor.asOne([&] {
        m_db.editor.createTable(plan.table);
        addParts(plan.table.name, {}, plan.relations);
    });
    return 0;
}

int PlanExecution::carryOut(const sql::AddFieldPlan &plan)
{
    table(plan.table);
    m_db.editor.asOne([&] {
        m_db.editor.addField(plan.table, plan.field);
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
        if (!plan.check.isEmpty())
            m_db.editor.addRule(plan.table, plan.check);
        addParts(plan.table, plan.indexes, plan.relations);
    });
    return 0;
}

int PlanExecution::carryOut(const sql::DropConstraintPlan &plan)
{
    const TableInfo &owner = table(plan.table);
    const RelationInfo *relation = m_db.catalog.findRelation(plan.name);
    if (relation && relation->foreignTable.compare(owner.name, Qt::CaseInsensitive) == 0)
        m_db.editor.deleteRelation(plan.name);
    else if (owner.index(plan.name))
        m_db.editor.deleteIndex(plan.table, plan.name);
    else
        fail(error::NoSuchConstraint, {plan.name});
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
    QueryDef query = QueryDef::stored(m_database, plan.query);
    for (qsizetype i = 0; i < plan.arguments.size(); ++i) {
        store::Statement argument(m_db.connection, u"SELECT "_s + plan.arguments[i], store::Access::User);
        bindParameters(argument);
        argument.step();
        query.setParameter(int(i), store::columnValue(argument, 0, DataType::Unknown));
    }
    return query.execute();
}

} // namespace dao

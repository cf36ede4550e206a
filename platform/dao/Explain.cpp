#include "Explain.h"

#include "DatabaseImpl.h"
#include "QueryDef.h"

#include <dao/sql/Compiler.h>

#include <QHash>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

/// Fills an explanation from each kind of plan.
class PlanReader
{
public:
    PlanReader(Database &database, Explanation &out)
        : m_database(database)
        , m_out(out)
    {
    }

    void operator()(const sql::SelectPlan &plan)
    {
        m_out.kind = plan.crosstab ? u"TRANSFORM"_s : u"SELECT"_s;
        m_out.returnsRows = true;
        m_out.columns = plan.columns;
        m_out.whyNot = plan.whyNot;
        addSelect(plan);
    }

    void operator()(const sql::ActionPlan &plan)
    {
        m_out.kind = u"change of table %1"_s.arg(plan.tables.join(u", "_s));
        int number = 0;
        for (const sql::ActionPlan::Step &step : plan.steps) {
            const QString what = step.materialiseInto.isEmpty() ? u"change"_s : u"rows materialised first"_s;
            add(plan.steps.size() == 1 ? what : u"step %1, %2"_s.arg(++number).arg(what), step.sql);
        }
    }

    void operator()(const sql::SelectIntoPlan &plan)
    {
        m_out.kind = u"SELECT INTO new table %1"_s.arg(plan.table.name);
        m_out.columns = plan.select.columns;
        for (sql::Column &column : m_out.columns)
            column.updatable = false;
        add(u"rows"_s, plan.select.fullSql);
    }

    void operator()(const sql::ExecutePlan &plan)
    {
        // The recursion ends because the compiler refuses stored queries that call themselves.
        m_out.kind = u"EXECUTE of query %1"_s.arg(plan.query);
        QueryDef query = QueryDef::stored(m_database, plan.query);
        const QString kind = m_out.kind;
        const QList<sql::Parameter> parameters = m_out.parameters;
        m_out = explain(m_database, query.sql());
        m_out.kind = kind;
        m_out.parameters = parameters;
    }

    void operator()(const sql::CreateTablePlan &plan) { m_out.kind = u"creation of table %1"_s.arg(plan.table.name); }
    void operator()(const sql::AddFieldPlan &plan) { changeOf(plan.table, u"new field %1"_s.arg(plan.field.name)); }
    void operator()(const sql::AlterFieldPlan &plan)
    {
        changeOf(plan.table, u"field %1 gets another type"_s.arg(plan.field.name));
    }
    void operator()(const sql::DropFieldPlan &plan) { changeOf(plan.table, u"field %1 goes"_s.arg(plan.field)); }
    void operator()(const sql::AddConstraintPlan &plan) { changeOf(plan.table, u"new constraint"_s); }
    void operator()(const sql::DropConstraintPlan &plan)
    {
        changeOf(plan.table, u"constraint %1 goes"_s.arg(plan.name));
    }
    void operator()(const sql::DropTablePlan &plan) { m_out.kind = u"deletion of %1"_s.arg(plan.name); }
    void operator()(const sql::CreateIndexPlan &plan) { changeOf(plan.table, u"new index %1"_s.arg(plan.index.name)); }
    void operator()(const sql::DropIndexPlan &plan) { changeOf(plan.table, u"index %1 goes"_s.arg(plan.index)); }
    void operator()(const sql::CreateQueryPlan &plan)
    {
        m_out.kind = u"creation of stored query %1"_s.arg(plan.query.name);
    }
    void operator()(const sql::DropQueryPlan &plan) { m_out.kind = u"deletion of stored query %1"_s.arg(plan.name); }

private:
    void changeOf(const QString &table, const QString &what)
    {
        m_out.kind = u"definition of table %1: %2"_s.arg(table, what);
    }

    void addSelect(const sql::SelectPlan &plan)
    {
        if (plan.crosstab) {
            add(u"column headings"_s, plan.crosstab->valuesSql);
            add(u"rows, without the columns that the headings give"_s, sql::withHeadings(plan, {}).fullSql);
            return;
        }
        add(u"rows"_s, plan.fullSql);
        if (plan.keyed) {
            if (!plan.sortedKeySql.isEmpty())
                add(u"first page of a dynaset"_s, plan.keySql);
            add(u"keys of a dynaset"_s, plan.sortedKeySql.isEmpty() ? plan.keySql : plan.sortedKeySql);
            add(u"row of a dynaset"_s, plan.rowSql);
        }
    }

    void add(const QString &purpose, const QString &sql)
    {
        Explanation::Step step{purpose, sql, {}};
        try {
            step.plan = queryPlan(m_database, sql);
        } catch (const DaoException &) {
            // The statement reads a temporary table that an earlier step creates, so SQLite cannot prepare it here.
        }
        m_out.steps.append(step);
    }

    Database &m_database;
    Explanation &m_out;
};

} // namespace

Explanation explain(Database &database, const QString &sql)
{
    QueryDef query(database, sql);
    Explanation explanation;
    explanation.parameters = query.compiled().parameters;
    std::visit(PlanReader(database, explanation), query.compiled().plan);
    return explanation;
}

// EXPLAIN QUERY PLAN returns id and parent id of each step; the indentation follows from the parents.
QStringList queryPlan(Database &database, const QString &innerSql)
{
    store::Statement statement(database.impl().connection, u"EXPLAIN QUERY PLAN "_s + innerSql);
    QHash<qint64, int> depths;
    QStringList lines;
    while (statement.step()) {
        const int depth = depths.value(statement.integer(1), -1) + 1;
        depths.insert(statement.integer(0), depth);
        lines.append(QString(2 * depth, u' ') + statement.text(3));
    }
    return lines;
}

} // namespace dao

#pragma once
#include "QueryDefImpl.h"

namespace dao {

/// Runs an action statement with the parameter values of its definition and returns the number of affected rows. Errors
/// have the place of the failed expression, if that can be determined. Errors: 3065 for a statement that returns rows,
/// 3061 if a parameter has no value.
int executeStatement(QueryDefImpl &query);

/// Executes the plan of a statement that returns no rows, inside a savepoint: a failure undoes all of it.
class PlanExecution
{
public:
    explicit PlanExecution(QueryDefImpl &query);
    /// Returns the number of affected rows.
    int run();

private:
    int carryOut(const sql::SelectPlan &plan);
    int carryOut(const sql::ActionPlan &plan);
    int carryOut(const sql::SelectIntoPlan &plan);
    int carryOut(const sql::CreateTablePlan &plan);
    int carryOut(const sql::AddFieldPlan &plan);
    int carryOut(const sql::AlterFieldPlan &plan);
    int carryOut(const sql::DropFieldPlan &plan);
    int carryOut(const sql::AddConstraintPlan &plan);
    int carryOut(const sql::DropConstraintPlan &plan);
    int carryOut(const sql::DropTablePlan &plan);
    int carryOut(const sql::CreateIndexPlan &plan);
    int carryOut(const sql::DropIndexPlan &plan);
    int carryOut(const sql::CreateQueryPlan &plan);
    int carryOut(const sql::DropQueryPlan &plan);
    int carryOut(const sql::ExecutePlan &plan);

    int runAlone(const sql::ActionPlan::Step &step);
    QStringList withCascadeTargets(const QStringList &tables) const;
    void bindParameters(store::Statement &statement) const;
    void addParts(const QString &table, const QList<IndexInfo> &indexes, const QList<RelationInfo> &relations);
    QString freeRelationName(const RelationInfo &relation) const;
    const TableInfo &table(const QString &name) const;
    [[noreturn]] void fail(int number, const QStringList &arguments = {}) const;

    DatabaseImpl &m_db;
    QueryDefImpl &m_query;
};

} // namespace dao

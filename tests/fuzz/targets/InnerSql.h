#pragma once
#include <dao/sql/plan/Compiled.h>

#include <sqlite3.h>

namespace fuzz {

/// Runs the inner SQL of compiled statements on a connection, a bounded number of steps each, and undoes what they
/// change. Throws Finding for a text that the inner engine refuses, for an error that is none of ours, and for rows
/// that are others when they are read by their keys.
class InnerSql
{
public:
    InnerSql(sqlite3 *handle, const dao::sql::CompiledStatement &statement)
        : m_handle(handle)
        , m_statement(statement)
    {
    }

    void run();

private:
    struct Rows
    {
        QList<QStringList> cells;
        bool complete = false; ///< neither an error nor too many steps
    };

    void runSelect(const dao::sql::SelectPlan &plan);
    void runKeyed(const dao::sql::SelectPlan &plan, const Rows &expected);
    void runAction(const dao::sql::ActionPlan &plan);
    void runSteps(const QList<dao::sql::ActionPlan::Step> &steps);
    /// Key 0 stands for Null.
    Rows read(const QString &sql, const QList<qint64> &keys = {});
    sqlite3_stmt *prepare(const QString &sql);
    void bind(sqlite3_stmt *statement, const QList<qint64> &keys) const;
    void checkError(int result, const QString &sql) const;

    sqlite3 *m_handle;
    const dao::sql::CompiledStatement &m_statement;
};

} // namespace fuzz

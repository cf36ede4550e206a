#pragma once
#include "QueryBinder.h"

#include <QSet>

namespace dao::sql::bound {

/// Binds INSERT, UPDATE and DELETE.
class ModifyBinder
{
public:
    explicit ModifyBinder(BindContext &context)
        : m_context(context)
    {
    }

    Insert bind(const ast::Insert &insert);
    Update bind(const ast::Update &update);
    Delete bind(const ast::Delete &statement);

private:
    const TableInfo *targetTable(const ast::NameAt &name);
    void bindInsertFields(Insert &bound, const ast::Insert &insert);
    int fieldNamed(const TableInfo &table, const ast::NameAt &name);
    ExprPtr fitted(ExprPtr value, const FieldInfo &field);
    void addField(Insert &bound, int field, ast::Range range);
    void bindValues(Insert &bound, const ast::Insert &insert);
    void bindInsertQuery(Insert &bound, const ast::Insert &insert);
    void addComputedDefaults(Insert &bound);
    AssignedField bindAssignment(SelectBinder &binder, const ast::Assignment &assignment);
    void requireUpdatable(const Select &select, Range range);
    void bindAbsent(Update &bound, const Scope &scope, const Source &target, Range place);
    std::vector<std::pair<int, ExprPtr>> computedDefaults(const TableInfo &table, const QSet<int> &given);
    const Source *deleteTargetOf(const SelectBinder &binder, const ast::Delete &statement);
    const Source *tableOf(const SelectBinder &binder, const QString &name, Range range);

    BindContext &m_context;
    /// Field names of the table by their column names in the stored query that INSERT uses; empty for a table.
    QHash<QString, int> m_throughQuery;
    std::vector<int> m_queryFields; ///< these fields in the order of the query's columns
};

} // namespace dao::sql::bound

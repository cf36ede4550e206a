#pragma once
#include "BindContext.h"

namespace dao::sql::bound {

/// Translates statements that change the schema into plans for the catalog. Names are checked here, where their place
/// in the text is known.
class DefinitionPlanner
{
public:
    explicit DefinitionPlanner(const BindContext &context)
        : m_context(context)
    {
    }

    Plan plan(const ast::CreateTable &node) const;
    Plan plan(const ast::AlterTable &node) const;
    Plan plan(const ast::CreateIndex &node) const;
    Plan plan(const ast::DropTable &node) const;
    Plan plan(const ast::DropIndex &node) const;
    Plan plan(const ast::CreateQuery &node) const;
    Plan plan(const ast::DropQuery &node) const;

private:
    struct Constraints
    {
        QList<IndexInfo> indexes;
        QList<RelationInfo> relations;
        QList<NamedCheck> checks;
    };

    const TableInfo &tableNamed(const ast::NameAt &name) const;
    void checkName(const ast::NameAt &name) const;
    const FieldInfo &fieldNamed(const TableInfo &table, const ast::NameAt &name) const;
    void addIndexField(IndexInfo &index, const TableInfo &table, const ast::NameAt &name, bool descending) const;
    FieldInfo newField(const TableInfo &table, const ast::FieldDefinition &definition) const;
    FieldInfo fieldOf(const ast::FieldDefinition &definition) const;
    void addFieldConstraints(Constraints &constraints, FieldInfo &field, const ast::FieldDefinition &definition,
                             const TableInfo &table) const;
    void addConstraint(Constraints &constraints, const ast::Constraint &constraint, const TableInfo &table) const;
    void verifyCheck(const ast::Constraint &constraint, const TableInfo &table) const;
    void verifyPart(Range range, const std::function<void(BindContext &)> &bind) const;
    RelationInfo relationOf(const ast::Constraint &constraint, const TableInfo &table) const;
    Plan change(const ast::AlterTable::AddField &change, const TableInfo &table) const;
    Plan change(const ast::AlterTable::AlterField &change, const TableInfo &table) const;
    Plan change(const ast::AlterTable::DropField &change, const TableInfo &table) const;
    Plan change(const ast::Constraint &change, const TableInfo &table) const;
    Plan change(const ast::AlterTable::DropConstraint &change, const TableInfo &table) const;

    const BindContext &m_context;
};

} // namespace dao::sql::bound

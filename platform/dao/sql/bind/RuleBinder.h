#pragma once
#include "ExpressionBinder.h"

namespace dao::sql::bound {

/// A schema without anything, for texts that name nothing but the fields they are given.
class NoSchema : public SchemaView
{
public:
    const TableInfo *findTable(QStringView) const override { return nullptr; }
    const QueryInfo *findQuery(QStringView) const override { return nullptr; }
    QStringList sourceNames() const override { return {}; }
};

/// A default value, converted to its field. What is no expression, or names something, counts as text.
ExprPtr bindDefault(BindContext &context, const QString &text, const FieldInfo &field);

/// A validation rule, which is the text of the context, over the fields of a table. implied: the field that a
/// comparison without left side means; null for the rule of a table.
ExprPtr bindRule(BindContext &context, const Source &source, const FieldInfo *implied);

} // namespace dao::sql::bound

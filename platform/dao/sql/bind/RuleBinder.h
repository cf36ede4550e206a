#pragma once
#include "ExpressionBinder.h"

namespace dao::sql::bound {

/// An empty schema, for texts that can name only the given fields.
class NoSchema : public SchemaView
{
public:
    const TableInfo *findTable(QStringView) const override { return nullptr; }
    const QueryInfo *findQuery(QStringView) const override { return nullptr; }
    QStringList sourceNames() const override { return {}; }
};

/// Binds a default value, converted to its field. Text that is not an expression, or that contains a name, is a text
/// literal.
ExprPtr bindDefault(BindContext &context, const QString &text, const FieldInfo &field);

/// Binds the validation rule in context.text() over the fields of a table. implied: the field for comparisons without a
/// left operand; null for the rule of a table.
ExprPtr bindRule(BindContext &context, const Source &source, const FieldInfo *implied);

} // namespace dao::sql::bound

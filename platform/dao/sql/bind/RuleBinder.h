#pragma once
#include "ExpressionBinder.h"

namespace dao::sql::bound {

/// A default value, converted to its field. What is no expression, or names something, counts as text.
ExprPtr bindDefault(BindContext &context, const QString &text, const FieldInfo &field);

/// A validation rule over the fields of a table. implied: the field that a comparison without left side means; null for
/// the rule of a table.
ExprPtr bindRule(BindContext &context, const Source &source, const FieldInfo *implied);

} // namespace dao::sql::bound

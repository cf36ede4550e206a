#pragma once
#include <dao/values/Value.h>

namespace dao::store {

class Statement;

/// A value as the inner engine stores it: Booleans -1/0, dates and currency as reals.
void bindValue(Statement &statement, int parameter, const Value &value);

/// A column of the current row as a value of the declared type. What does not fit the type (an expression that outgrew
/// it) comes as the kind in which it is stored; so does a column without a type.
Value columnValue(const Statement &statement, int column, DataType type);

/// Of a column that is an expression: the number of the error that its calculation ended with, or 0. That is also 6 for
/// a number that is not finite, and 5 for a date before the year 100 or after 9999, limits that the inner engine does
/// not know.
int failureOf(const Statement &statement, int column, DataType type);

} // namespace dao::store

#pragma once
#include <dao/values/Value.h>

namespace dao::store {

class Statement;

/// Binds a value in stored form: Booleans as -1/0, dates and currency as reals.
void bindValue(Statement &statement, int parameter, const Value &value);

/// A column of the current row as a value of the declared type. A value that does not fit the type (an overflow in an
/// expression) is returned with its stored type; so is a column without a declared type.
Value columnValue(const Statement &statement, int column, DataType type);

/// For a computed column: the error number of the failed calculation, or 0. Also 6 for an infinite number and 5 for a
/// date before the year 100 or after 9999, because SQLite does not know these limits.
int failureOf(const Statement &statement, int column, DataType type);

} // namespace dao::store

#pragma once
#include "Bound.h"

#include <dao/values/TypeSize.h>

namespace dao::sql::bound {

/// Type families: values of the same family can be compared.
enum class Family { Any, Number, Date, Text, Binary };
Family familyOf(DataType type);

/// The type of + - * / \ Mod ^ on numbers and dates. Sums of integers are at least Long, so that they do not overflow
/// easily.
DataType arithmeticType(BinaryOp op, DataType left, DataType right);
/// The type that holds the values of both; Unknown is ignored. Text if no other type can hold both.
DataType commonType(DataType left, DataType right);

/// The description of an output column: for a plain field that of the table's field, for an expression its type. A
/// computed truth value is a number, -1 or 0.
FieldInfo outputInfo(const QString &name, const Expr &expr);

QStringList fieldNames(const TableInfo &table);

/// True if values of the expression can be stored in a field of that type without conversion.
bool fitsField(const Expr &expr, DataType field);

} // namespace dao::sql::bound

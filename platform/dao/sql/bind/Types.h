#pragma once
#include "Bound.h"

#include <dao/values/TypeSize.h>

namespace dao::sql::bound {

/// What may be compared with what.
enum class Family { Any, Number, Date, Text, Binary };
Family familyOf(DataType type);

/// Type of + - * / \ Mod ^ on numbers and dates. Sums of whole numbers are Long at least, so that they hold the result.
DataType arithmeticType(BinaryOp op, DataType left, DataType right);
/// The type that holds values of both; Unknown counts as nothing. Text, when only text holds both.
DataType commonType(DataType left, DataType right);

/// What the user sees of an output column: of a plain field all that the table knows, of an expression its type. A
/// truth value that is no field is a number, -1 or 0.
FieldInfo outputInfo(const QString &name, const Expr &expr);

QStringList fieldNames(const TableInfo &table);

/// True when values of the expression can go into a field of that type as they are.
bool fitsField(const Expr &expr, DataType field);

} // namespace dao::sql::bound

#pragma once
#include "Call.h"

#include <dao/values/DataType.h>

namespace dao::functions {

/// The DAO type passed at that place.
DataType typeArgument(const Call &call, int index);

/// A number as text, with as many digits as its type has: 7 of a Single, else up to 15.
QString numberTextOf(double number, DataType type);

/// A value as CStr and a Format without a format write it, by the type passed beside it: dates in the general form,
/// Booleans as True and False, a Single with its 7 digits. Null is empty.
QString textOf(const Call &call, int typeIndex, int valueIndex);

/// Letters are folded one by one, so that a text keeps its length: there is no capital of "ß".
QString upperCaseOf(QString text);
QString lowerCaseOf(QString text);

} // namespace dao::functions

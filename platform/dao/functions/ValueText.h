#pragma once
#include "Call.h"

#include <dao/values/DataType.h>

namespace dao::functions {

/// The DAO type that the compiler passes as this argument.
DataType typeArgument(const Call &call, int index);

/// A number as text with the digits of its type: 7 for a Single, else up to 15.
QString numberTextOf(double number, DataType type);

/// A value as text, as CStr and Format without a pattern write it, by the type passed as another argument: dates in the
/// general form, Booleans as True and False, a Single with 7 digits. Null is empty.
QString textOf(const Call &call, int typeIndex, int valueIndex);

/// Changes case character by character, so that the length stays equal: "ß" has no single capital letter.
QString upperCaseOf(QString text);
QString lowerCaseOf(QString text);

} // namespace dao::functions

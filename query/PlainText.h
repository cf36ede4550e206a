#pragma once
#include <dao/values/Value.h>
#include <QStringList>
#include <tarnwick/CsvLine.h>

namespace query {

/// A value as text for other programs, independent of display formats: numbers with a decimal point, dates
/// "mm/dd/yyyy hh:mm:ss", Booleans True and False, Null empty.
QString plainText(const dao::Value &value);

/// A stored date in a form of QDateTime::toString().
QString plainDate(double days, QStringView form);

using tarnwick::csvLine;

} // namespace query

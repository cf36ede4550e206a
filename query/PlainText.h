#pragma once
#include <dao/values/Value.h>
#include <QStringList>
#include <tarnwick/CsvLine.h>

namespace query {

/// A value as text for other programs, see CellPrinter::plain().
QString plainText(const dao::Value &value);

using tarnwick::csvLine;

} // namespace query

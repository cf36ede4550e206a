#pragma once
#include "SqlOutput.h"
#include "Target.h"

namespace cli {

/// Connects to the database. Returns false after reporting the error, to the writer too.
bool connectFor(Target &target, RowWriter &writer);

/// Runs a statement and prints its rows, or the number of rows that it changed. name: of the query that it belongs to;
/// empty for a statement alone. Returns false after reporting the error.
bool runStatement(Target &target, const QString &name, const QString &sql, RowWriter &writer);

} // namespace cli

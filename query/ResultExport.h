#pragma once
#include "QueryResult.h"

#include <dao/values/CellFailure.h>

namespace query {

/// Writes the rows of a result to a text file: "|", then every cell right-aligned in its column's width and "|", a line
/// a row, no title line. Longer texts are not cut. UTF-8. Throws tarnwick::FileError; an existing file is then as
/// before. Returns the cells that could not be calculated; the file has "#Div/0!", "#Num!" or "#Error" for them.
dao::CellFailures exportText(const QueryResult &result, const QString &machinePath,
                             tarnwick::Progress *progress = nullptr);

/// The same with the failure reported (1063); false then. Cells that could not be calculated are told once the file is
/// written.
bool exportText(const QueryResult &result, const QString &machinePath, tarnwick::UserPrompts &prompts,
                tarnwick::Progress *progress = nullptr);

} // namespace query

#pragma once
#include "QueryResult.h"

#include <dao/values/CellFailure.h>

namespace query {

/// Writes the rows of a result to a text file (UTF-8), one line per row and no title line: "|", then every cell
/// right-aligned in its column's width and followed by "|". Longer texts are not cut. Throws tarnwick::FileError; an
/// existing file is then unchanged. Returns the cells that could not be calculated; the file has "#Div/0!", "#Num!" or
/// "#Error" for them.
dao::CellFailures exportText(const QueryResult &result, const QString &machinePath,
                             tarnwick::Progress *progress = nullptr);

/// Exports as above and reports a failure (1063), then returns false. Cells that could not be calculated are reported
/// after the file was written.
bool exportText(const QueryResult &result, const QString &machinePath, tarnwick::UserPrompts &prompts,
                tarnwick::Progress *progress = nullptr);

} // namespace query

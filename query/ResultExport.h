#pragma once
#include "QueryResult.h"

#include <dao/values/CellFailure.h>
#include <functional>
#include <optional>

namespace query {

/// The kinds of files that the rows of a result can be exported to.
enum class ExportForm {
    Text, ///< UTF-8, one line per row and no title line: "|", then every cell as displayed, right-aligned in its
          ///< column's width and followed by "|"; longer texts are not cut
    Csv,  ///< UTF-8, a line with the names of the columns, then the values, independent of display formats
    Xlsx  ///< spreadsheet with a row of titles; cells have the types of their values
};

/// The form that the extension of a file stands for: ".txt", ".csv" or ".xlsx". Empty for any other.
std::optional<ExportForm> exportFormOf(const QString &path);

/// The rows that are exported, in order: as a table shows them.
struct ExportOrder
{
    qint64 count = 0;
    std::function<qint64(qint64 place)> row; ///< row of the result at a place; empty: all rows in the result's order
};

/// Writes the rows of a result to a file. Throws tarnwick::FileError, Cancelled and the engine's exceptions; an
/// existing file is then unchanged. Returns the cells that could not be calculated; the file has "#Div/0!", "#Num!" or
/// "#Error" for them.
dao::CellFailures exportRows(const QueryResult &result, ExportForm form, const QString &machinePath,
                             tarnwick::Progress *progress = nullptr, const ExportOrder &order = {});
inline dao::CellFailures exportText(const QueryResult &result, const QString &machinePath,
                                    tarnwick::Progress *progress = nullptr)
{
    return exportRows(result, ExportForm::Text, machinePath, progress);
}

/// Exports as above and reports a failure (1063), then returns false. Cells that could not be calculated are reported
/// after the file was written. A file without one of the known extensions is written as text.
bool exportResult(const QueryResult &result, const QString &machinePath, tarnwick::UserPrompts &prompts,
                  tarnwick::Progress *progress = nullptr, const ExportOrder &order = {});

} // namespace query

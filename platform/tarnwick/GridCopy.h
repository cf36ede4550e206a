#pragma once
#include "base/Progress.h"
#include "GridModel.h"

#include <QItemSelection>

namespace tarnwick {

/// Selected cells in the formats that spreadsheets accept.
struct GridClip
{
    QString text; ///< lines of cells separated by tabs
    QString html; ///< HTML table with the alignment of the columns; empty for a very large selection
};

/// Copies the smallest set of whole rows and columns that contains the selection; its cells that are not selected are
/// left empty. The line of a row without cells is in the first column. withTitles adds the column titles. Throws
/// Cancelled if the progress stops it.
GridClip copyCells(const GridModel &model, const QItemSelection &selection, bool withTitles,
                   Progress *progress = nullptr);

/// All rows as they are shown, filtered and sorted, as CSV below a line of titles.
QString gridAsCsv(const GridModel &model);

/// Statistics of the selected cells that contain numbers.
struct CellStatistics
{
    qint64 cells = 0; ///< number of selected cells
    qint64 numbers = 0;
    double sum = 0;
    double least = 0;
    double largest = 0;

    double mean() const { return numbers > 0 ? sum / double(numbers) : 0; }
    /// "Count 3   Sum 120   Mean 40   Min 20   Max 60"; only the count if no cell contains a number; empty for fewer
    /// than two cells.
    QString text() const;
};
CellStatistics cellStatistics(const GridModel &model, const QItemSelection &selection, Progress *progress = nullptr);

} // namespace tarnwick

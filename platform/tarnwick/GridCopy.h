#pragma once
#include "GridModel.h"
#include "Progress.h"

#include <QItemSelection>

namespace tarnwick {

/// The marked cells of a table as a spreadsheet takes them.
struct GridClip
{
    QString text; ///< lines of cells with tabs between
    QString html; ///< the same as an HTML table, with the columns' alignment
};

/// Copies the smallest set of whole rows and columns that holds the selection: a cell of it that is not marked is left
/// empty. withTitles puts the column titles first. Throws Cancelled when the progress stops it.
GridClip copyCells(const GridModel &model, const QItemSelection &selection, bool withTitles,
                   Progress *progress = nullptr);

/// Figures over the marked cells that hold numbers.
struct CellStatistics
{
    qint64 cells = 0; ///< marked
    qint64 numbers = 0;
    double sum = 0;
    double least = 0;
    double largest = 0;

    double mean() const { return numbers > 0 ? sum / double(numbers) : 0; }
    /// "Count 3   Sum 120   Mean 40   Min 20   Max 60"; only the count where no cell holds a number; empty for less
    /// than two cells.
    QString text() const;
};
CellStatistics cellStatistics(const GridModel &model, const QItemSelection &selection, Progress *progress = nullptr);

} // namespace tarnwick

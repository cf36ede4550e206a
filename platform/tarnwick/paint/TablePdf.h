#pragma once
#include "TablePrint.h"

namespace tarnwick {

/// Writes the pages of a printed table to a PDF file, through the one writer of files: page by page, so that memory
/// does not grow with the number of pages; the file is replaced when it is complete. Returns the number of cells that
/// were cut. Throws FileError and, as TablePrint::printOn(), Error and Cancelled; an existing file is then unchanged.
qint64 storeTablePdf(const TablePrint &print, const QString &path, const QString &title, Progress *progress = nullptr);

} // namespace tarnwick

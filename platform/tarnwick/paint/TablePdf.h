#pragma once
#include "TablePrint.h"

class QPageSize;

namespace tarnwick {

/// The pages of a printed table as a PDF file. paper: the one that the pages are laid out for, in portrait. Adds the
/// number of cells that were cut to cut. Throws as TablePrint::printOn().
QByteArray tablePdf(const TablePrint &print, const QPageSize &paper, const QString &title, qint64 &cut,
                    Progress *progress = nullptr);

} // namespace tarnwick

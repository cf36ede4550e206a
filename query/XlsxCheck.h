#pragma once
#include <QString>
#include <tarnwick/base/Progress.h>

namespace query {

/// Checks that a spreadsheet file with one sheet is complete: every part of the archive can be read and has its end,
/// and the sheet has as many bytes of rows as were written. Needed because libxlsxwriter does not look whether its
/// temporary files could be written. Throws tarnwick::FileError, and tarnwick::Cancelled if the progress stops it.
void checkXlsxFile(const QString &path, qint64 rowBytes, tarnwick::Progress *progress = nullptr);

} // namespace query

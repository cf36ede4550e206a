#pragma once
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Appends a cell of a CSV file, quoted where necessary.
void appendCsvCell(QString &line, QStringView cell);
/// Ends a line of cells and commas.
inline constexpr QStringView kCsvLineEnd = u"\r\n";
/// One line of a CSV file, with its line end: cells are separated by commas and quoted where necessary.
QString csvLine(const QStringList &cells);

} // namespace tarnwick

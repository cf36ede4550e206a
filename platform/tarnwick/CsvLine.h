#pragma once
#include <QString>
#include <QStringList>

namespace tarnwick {

/// One line of a CSV file, with its line end: cells are separated by commas and quoted where necessary.
QString csvLine(const QStringList &cells);

} // namespace tarnwick

#pragma once
#include <QString>

#include <memory>

class QPrinter;

namespace tarnwick {

/// A printer with the paper, orientation and device that the user chose last, or the system's default printer. Without
/// any printer the output goes to a PDF file, on A4 or Letter by the locale. key: under which the choice is remembered.
std::unique_ptr<QPrinter> makePrinter(const QString &key, bool isLandscape);
/// Remembers the user's choice. Throws FileError.
void keepPrinter(const QPrinter &printer, const QString &key);

} // namespace tarnwick

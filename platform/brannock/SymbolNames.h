#pragma once
#include <ellery/TubeMark.h>
#include <QList>
#include <QString>

namespace brannock {

/// Name of a symbol: "letter A", "capital delta", "arrow left". For a symbol outside the table, its code.
QString symbolName(ellery::Symbol symbol);
/// "0x0394"
QString symbolCode(ellery::Symbol symbol);
/// Table positions that match the typed text, best first: the symbol itself, its code ("0394", "U+0394", "0x0394"), or
/// words that all occur in its name. An empty text matches all.
QList<int> findSymbols(QStringView text);

} // namespace brannock

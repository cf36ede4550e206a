#pragma once
#include <QList>
#include <QString>

namespace brannock {

/// What people call a symbol: "letter A", "capital delta", "arrow left". For symbols outside the table, its code.
QString symbolName(char16_t symbol);
/// "0x0394"
QString symbolCode(char16_t symbol);
/// Places in the table that fit what was typed, best first: the symbol itself, its code ("0394", "U+0394", "0x0394"),
/// or words of its name, each of them somewhere in it. All places for an empty text.
QList<int> findSymbols(QStringView text);

} // namespace brannock

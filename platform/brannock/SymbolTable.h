#pragma once
#include <array>
#include <QtGlobal>

namespace brannock {

/// The characters offered as symbols of map entries, in the order of the chooser's grid: 9 rows of 16. One of them
/// stands in the table twice. Any other character may occur in map files, too.
inline constexpr int kSymbolColumns = 16;
inline constexpr int kSymbolCount = 144;
const std::array<char16_t, kSymbolCount> &symbolTable();

/// First place of the symbol in the table, or -1.
int symbolIndex(char16_t symbol);

} // namespace brannock

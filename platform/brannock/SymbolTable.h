#pragma once
#include <array>
#include <ellery/TubeMark.h>

namespace brannock {

/// The characters offered as symbols of map entries, in the order of the chooser's grid: 9 rows of 16. One of them
/// occurs twice. Map files may contain any other character.
inline constexpr int kSymbolColumns = 16;
inline constexpr int kSymbolCount = 144;
const std::array<ellery::Symbol, kSymbolCount> &symbolTable();

/// First position of the symbol in the table, or -1.
int symbolIndex(ellery::Symbol symbol);

} // namespace brannock

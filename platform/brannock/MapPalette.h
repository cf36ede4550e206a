#pragma once
#include <QString>

namespace brannock {

/// Colours for map entries that people who see no difference between red and green can tell apart, red first.
inline constexpr int kPaletteSize = 8;
/// 0x00BBGGRR; the palette begins again after its end.
quint32 paletteColour(int place);
QString paletteColourName(int place);

} // namespace brannock

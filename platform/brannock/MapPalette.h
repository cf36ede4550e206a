#pragma once
#include <QString>

namespace brannock {

/// Colours for map entries that remain distinguishable with red-green colour blindness; red comes first.
inline constexpr int kPaletteSize = 8;
/// 0x00BBGGRR; repeats after the end of the palette.
quint32 paletteColour(int place);
QString paletteColourName(int place);

} // namespace brannock

#pragma once
#include <QString>
#include <tarnwick/ColourRef.h>

namespace brannock {

/// Colours for map entries that remain distinguishable with red-green colour blindness; red comes first.
inline constexpr int kPaletteSize = 8;
/// Repeats after the end of the palette.
tarnwick::ColourRef paletteColour(int place);
QString paletteColourName(int place);

} // namespace brannock

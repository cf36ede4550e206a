#pragma once
#include <tarnwick/paint/Colours.h>

namespace brannock {

using tarnwick::ColourRef;

/// Appearance of the map: colours as stored in files and options, tick sizes in points.
struct MapOptions
{
    ColourRef mapColour{0xD0FFFD};  ///< the tubesheet itself
    ColourRef fillColour{0x000000}; ///< lines of tubes, stay rods and the tubesheet's edge
    ColourRef tickColour{0x000080};
    ColourRef selectColour{0x00FF00};
    ColourRef watermarkColour{0xC0C0C0};
    int displayTickSize = 8;
    int printTickSize = 7;
    bool operator==(const MapOptions &) const = default;
};

using tarnwick::contrast;
using tarnwick::fromColourRef;
using tarnwick::inkOn;
using tarnwick::mixed;
using tarnwick::readable;
using tarnwick::toColourRef;

} // namespace brannock

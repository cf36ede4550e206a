#pragma once
#include <tarnwick/paint/Colours.h>

namespace brannock {

/// Appearance of the map: colours as stored in files and options (0x00BBGGRR), tick sizes in points.
struct MapOptions
{
    quint32 mapColour = 0xD0FFFD;  ///< the tubesheet itself
    quint32 fillColour = 0x000000; ///< lines of tubes, stay rods and the tubesheet's edge
    quint32 tickColour = 0x000080;
    quint32 selectColour = 0x00FF00;
    quint32 watermarkColour = 0xC0C0C0;
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

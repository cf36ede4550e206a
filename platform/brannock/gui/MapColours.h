#pragma once
#include <QColor>

namespace brannock {

/// How the map looks: colours as files and options hold them (0x00BBGGRR), tick sizes in points.
struct MapOptions
{
    quint32 mapColour = 0xD0FFFD;  ///< the tubesheet itself
    quint32 fillColour = 0x000000; ///< the ink of tubes, stay rods and the tubesheet's edge
    quint32 tickColour = 0x000080;
    quint32 selectColour = 0x00FF00;
    quint32 watermarkColour = 0xC0C0C0;
    int displayTickSize = 8;
    int printTickSize = 7;
    bool operator==(const MapOptions &) const = default;
};

QColor fromColourRef(quint32 colour);
quint32 toColourRef(const QColor &colour);

/// From a (share 0) to b (share 1).
QColor mixed(const QColor &a, const QColor &b, double share);
/// Contrast ratio of two opaque colours, 1 to 21, by their relative luminance.
double contrast(const QColor &a, const QColor &b);
/// Black or white, whichever can be read better on the background.
QColor inkOn(const QColor &background);
/// The colour itself where it can be read on the background, else the same hue moved towards black or white until it
/// can.
QColor readable(const QColor &colour, const QColor &background, double minContrast = 3.5);

} // namespace brannock

#pragma once
#include <QColor>

namespace tarnwick {

/// Colours of records are 0x00BBGGRR.
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

} // namespace tarnwick

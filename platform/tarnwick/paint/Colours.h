#pragma once
#include <QColor>
#include <tarnwick/ColourRef.h>

namespace tarnwick {

/// Converts a colour of a record.
QColor fromColourRef(ColourRef colour);
ColourRef toColourRef(const QColor &colour);

/// Linear mix: share 0 gives a, share 1 gives b.
QColor mixed(const QColor &a, const QColor &b, double share);
/// Contrast ratio of two opaque colours by their relative luminance (WCAG 2), 1 to 21.
double contrast(const QColor &a, const QColor &b);
/// Black or white, whichever has the higher contrast with the background.
QColor inkOn(const QColor &background);
/// The colour itself if its contrast with the background is sufficient; otherwise moved towards black or white, keeping
/// the hue, until it is.
QColor readable(const QColor &colour, const QColor &background, double minContrast = 3.5);

} // namespace tarnwick

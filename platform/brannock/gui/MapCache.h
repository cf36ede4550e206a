#pragma once
#include "MapPainter.h"

#include <QImage>

namespace brannock {

/// The tubesheet as it was last painted for a screen, in device pixels, and the cheapest way to make it right again:
/// shifted when the view was panned, patched where tubes have changed, painted anew otherwise.
class MapCache
{
public:
    /// How the picture was brought up to date, for tests and benchmarks.
    enum class Work { None, Shifted, Patched, Painted };

    /// The next update() paints everything.
    void invalidate() { m_valid = false; }
    /// Patches the looks of these tubes into the picture, or leaves it to the next update() when painting all is
    /// quicker. Returns the part of the picture that has changed.
    QRegion patch(const MapScene &scene, const MapScene::Change &change);
    /// Makes the picture show this view, whose units are device pixels.
    Work update(const MapScene &scene, const MapView &view, const QColor &background);

    const QImage &image() const { return m_image; }
    MapPainter &painter() { return m_painter; }

private:
    bool shift(const MapScene &scene, const MapView &view);

    QImage m_image;
    MapPainter m_painter;
    MapView m_view;
    QColor m_background;
    bool m_valid = false;
};

} // namespace brannock

#pragma once
#include "MapPainter.h"

#include <QImage>
#include <QRegion>

namespace brannock {

/// The tubesheet as it was last painted for a screen, in device pixels, and the cheapest way to make it right again:
/// when the view was panned only what has come into sight is painted, where tubes have changed only these, everything
/// otherwise.
class MapCache
{
public:
    /// How the picture was brought up to date, for tests and benchmarks.
    enum class Work { None, Shifted, Painted };

    /// The next update() paints everything.
    void invalidate() { m_valid = false; }
    /// Patches the looks of these tubes into the picture, or leaves it to the next update() when painting all is
    /// quicker. Returns the part of the picture that has changed.
    QRegion patch(const MapScene &scene, const MapScene::Change &change);
    /// Makes the picture show this view, whose units are device pixels.
    Work update(const MapScene &scene, const MapView &view, const QColor &background);
    /// Whether the picture is one of the same tubes at another scale, as between two steps of zooming.
    bool isOtherScale(const MapView &view) const { return m_valid && m_view.scale != view.scale; }
    /// Paints the view onto an image of its size; nothing of it is kept, and the picture is out of date.
    void paintAside(QImage &image, const MapScene &scene, const MapView &view, const QColor &background);

    /// The picture; it shares the cache's pixels and holds until the next call of anything here.
    QImage image();
    QSize size() const { return m_size; }

private:
    bool shift(const MapScene &scene, const MapView &view);
    void reserve(const QSize &size);

    // The store is larger than the picture, which wanders about in it while the view is panned: moving millions of
    // pixels would take as long as painting them.
    QImage m_store;
    QPoint m_origin;
    QSize m_size;
    MapPainter m_painter;
    MapView m_view;
    QColor m_background;
    bool m_valid = false;
};

} // namespace brannock

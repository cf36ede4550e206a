#pragma once
#include "MapPainter.h"

#include <QImage>
#include <QRegion>

namespace brannock {

/// Cached picture of the tubesheet for a screen, in device pixels, with the cheapest way to update it: after panning
/// only the newly visible part is painted, after changes only the changed tubes, otherwise everything.
class MapCache
{
public:
    /// How the last update was done; for tests and benchmarks.
    enum class Work { None, Shifted, Painted };

    /// The next update() paints everything.
    void invalidate() { m_valid = false; }
    /// Repaints these tubes in the picture. If painting everything is faster, leaves it to the next update(). Returns
    /// the changed part of the picture.
    QRegion patch(const MapScene &scene, const MapScene::Change &change);
    /// Updates the picture to this view, in device pixels.
    Work update(const MapScene &scene, const MapView &view, const QColor &background);
    /// True if the picture shows the same tubes at another scale, as between two zoom steps.
    bool isOtherScale(const MapView &view) const { return m_valid && m_view.scale != view.scale; }
    /// Paints the view onto an image of its size without caching it; the cache is then out of date.
    void paintAside(QImage &image, const MapScene &scene, const MapView &view, const QColor &background);

    /// The picture. It shares the cache's pixels and is valid until the next call of any function.
    QImage image();
    QSize size() const { return m_size; }

private:
    bool shift(const MapScene &scene, const MapView &view);
    void reserve(const QSize &size);

    // The store is larger than the picture, whose position in it changes with panning: moving millions of pixels would
    // take as long as painting them.
    QImage m_store;
    QPoint m_origin;
    QSize m_size;
    MapPainter m_painter;
    MapView m_view;
    QColor m_background;
    bool m_valid = false;
};

} // namespace brannock

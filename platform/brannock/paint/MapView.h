#pragma once
#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace brannock {

/// Which part of the tubesheet is shown, and how: the way from map coordinates (y upwards) to a viewport whose upper
/// left corner is (0, 0) (y downwards), and back.
struct MapView
{
    QSizeF size;          ///< of the viewport, in the painter's units
    QPointF centre;       ///< map coordinates in the viewport's middle
    double scale = 1;     ///< painter's units for one unit of the map
    int xOrientation = 1; ///< -1: flipped left to right
    int yOrientation = 1; ///< -1: flipped upside down

    QPointF toView(double x, double y) const;
    QPointF toView(const QPointF &map) const { return toView(map.x(), map.y()); }
    QPointF toMap(const QPointF &view) const;
    /// The rectangle in map coordinates: left <= right, and top() is the lower y.
    QRectF toMap(const QRectF &view) const;
    QRectF toView(const QRectF &map) const;

    /// The point of the map under this place of the viewport stays there.
    void zoomAt(const QPointF &view, double factor);
    /// The picture moves by this much.
    void panBy(const QPointF &delta);
    /// The whole rectangle of the map becomes visible within the viewport less the margins.
    void fit(const QRectF &map, const QMarginsF &margins);
    /// The same part for a painter whose units are this much smaller: device pixels instead of logical ones.
    MapView scaled(double factor) const;

    bool operator==(const MapView &) const = default;
};

} // namespace brannock

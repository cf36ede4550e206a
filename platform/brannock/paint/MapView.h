#pragma once
#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace brannock {

/// The visible part of the tubesheet and its transformation: between map coordinates (y upwards) and a viewport with
/// its upper left corner at (0, 0) (y downwards).
struct MapView
{
    QSizeF size;          ///< size of the viewport, in the painter's units
    QPointF centre;       ///< map coordinates of the viewport's centre
    double scale = 1;     ///< painter's units per map unit
    int xOrientation = 1; ///< -1: flipped left to right
    int yOrientation = 1; ///< -1: flipped upside down

    QPointF toView(double x, double y) const;
    QPointF toView(const QPointF &map) const { return toView(map.x(), map.y()); }
    QPointF toMap(const QPointF &view) const;
    /// Converts to map coordinates: left <= right, and top() is the lower y.
    QRectF toMap(const QRectF &view) const;
    QRectF toView(const QRectF &map) const;

    /// Zooms so that the map point at this position stays there.
    void zoomAt(const QPointF &view, double factor);
    /// Moves the picture by delta.
    void panBy(const QPointF &delta);
    /// Fits the rectangle of the map into the viewport minus the margins.
    void fit(const QRectF &map, const QMarginsF &margins);
    /// The same view for a painter with smaller units: device pixels instead of logical pixels.
    MapView scaled(double factor) const;

    bool operator==(const MapView &) const = default;
};

} // namespace brannock

#include "MapView.h"

#include <algorithm>
#include <QMarginsF>

namespace brannock {

QPointF MapView::toView(double x, double y) const
{
    return {size.width() / 2 + (x - centre.x()) * scale * xOrientation,
            size.height() / 2 - (y - centre.y()) * scale * yOrientation};
}

QPointF MapView::toMap(const QPointF &view) const
{
    return {centre.x() + (view.x() - size.width() / 2) / scale * xOrientation,
            centre.y() - (view.y() - size.height() / 2) / scale * yOrientation};
}

QRectF MapView::toMap(const QRectF &view) const
{
    return QRectF(toMap(view.topLeft()), toMap(view.bottomRight())).normalized();
}

QRectF MapView::toView(const QRectF &map) const
{
    return QRectF(toView(map.topLeft()), toView(map.bottomRight())).normalized();
}

void MapView::zoomAt(const QPointF &view, double factor)
{
    const QPointF fixed = toMap(view);
    scale *= factor;
    centre += fixed - toMap(view);
}

void MapView::panBy(const QPointF &delta)
{
    centre += {-delta.x() / scale * xOrientation, delta.y() / scale * yOrientation};
}

void MapView::fit(const QRectF &map, const QMarginsF &margins)
{
    const double width = std::max(1.0, size.width() - margins.left() - margins.right());
    const double height = std::max(1.0, size.height() - margins.top() - margins.bottom());
    const double horizontal = map.width() > 0 ? width / map.width() : 0;
    const double vertical = map.height() > 0 ? height / map.height() : 0;
    if (horizontal <= 0 && vertical <= 0)
        return;
    scale = horizontal <= 0 ? vertical : vertical <= 0 ? horizontal : std::min(horizontal, vertical);
    centre = map.center();
    panBy({(margins.left() - margins.right()) / 2, (margins.top() - margins.bottom()) / 2});
}

MapView MapView::scaled(double factor) const
{
    MapView view = *this;
    view.size *= factor;
    view.scale *= factor;
    return view;
}

} // namespace brannock

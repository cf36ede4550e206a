#include "MapViewport.h"

#include <cmath>
#include <QMarginsF>

namespace brannock {

/// Steps closer to each other than this are one step of the view history.
static constexpr qint64 kJoinedMs = 700;
static constexpr double kLargestPitch = 320; // pixels

QPointF wholePixels(const QPointF &vector, double pixelRatio)
{
    return QPointF(std::round(vector.x() * pixelRatio), std::round(vector.y() * pixelRatio)) / pixelRatio;
}

void MapViewport::reset(const QSizeF &size, const MapRulers &rulers)
{
    m_rulers = rulers;
    m_view.size = size;
    m_view = fittedView();
    m_fitted = true;
    m_history.clear(m_view);
    layOutRulers();
}

void MapViewport::setRulers(const MapRulers &rulers)
{
    m_rulers = rulers;
    refit();
    layOutRulers();
}

void MapViewport::setSize(const QSizeF &size)
{
    m_view.size = size;
    m_history.setSize(size);
    refit();
    layOutRulers();
}

bool MapViewport::setOrientation(int x, int y)
{
    if (x == m_view.xOrientation && y == m_view.yOrientation)
        return false;
    m_view.xOrientation = x;
    m_view.yOrientation = y;
    m_history.setOrientation(x, y);
    refit(); // the rulers stay on their sides
    layOutRulers();
    return true;
}

MapView MapViewport::fittedView() const
{
    MapView view = m_view;
    const QMarginsF room = m_rulers.margins() + QMarginsF(4, 4, 4, 4);
    view.fit(m_scene.bounds(), room);
    return view;
}

void MapViewport::refit()
{
    if (!m_fitted)
        return;
    m_view = fittedView();
    m_history.replace(m_view);
}

void MapViewport::boundScale(MapView &view, const QPointF &anchor) const
{
    const double smallest = fittedView().scale / 2;
    const double largest = std::max(smallest, kLargestPitch / m_scene.pitch());
    view.zoomAt(anchor, std::clamp(view.scale, smallest, largest) / view.scale);
}

bool MapViewport::apply(const MapView &view, bool joined)
{
    if (view == m_view)
        return false;
    m_view = view;
    m_history.add({m_view, m_fitted}, joined);
    layOutRulers();
    return true;
}

bool MapViewport::applyJoined(const MapView &view)
{
    m_fitted = false;
    const bool joined = m_sinceStep.isValid() && m_sinceStep.elapsed() < kJoinedMs;
    m_sinceStep.start();
    return apply(view, joined);
}

bool MapViewport::setView(const MapView &view)
{
    MapView bounded = view;
    bounded.size = m_view.size;
    if (!(bounded.scale > 0) || !std::isfinite(bounded.scale))
        return false;
    boundScale(bounded, QRectF(QPointF(0, 0), bounded.size).center());
    m_fitted = false;
    return apply(bounded, false);
}

bool MapViewport::fit()
{
    m_fitted = true;
    return apply(fittedView(), false);
}

bool MapViewport::zoomAt(const QPointF &pos, double factor)
{
    if (m_scene.isEmpty() || !(factor > 0))
        return false;
    MapView view = m_view;
    view.zoomAt(pos, factor);
    boundScale(view, pos);
    return applyJoined(view);
}

bool MapViewport::zoomTo(const QRectF &mapRect)
{
    if (m_scene.isEmpty() || !(mapRect.width() > 0) || !(mapRect.height() > 0))
        return false;
    MapView view = m_view;
    view.fit(mapRect, m_rulers.margins());
    boundScale(view, QRectF(QPointF(0, 0), view.size).center());
    m_fitted = false;
    return apply(view, false);
}

bool MapViewport::panBy(const QPointF &delta)
{
    if (m_scene.isEmpty())
        return false;
    MapView view = m_view;
    view.panBy(delta);
    return applyJoined(view);
}

bool MapViewport::panTo(const MapView &view, bool joined)
{
    m_fitted = false;
    return apply(view, joined);
}

bool MapViewport::reveal(const QPointF &mapPoint, double pixelRatio)
{
    const double room = m_scene.pitch() * m_view.scale;
    const QRectF inside =
        QRectF(QPointF(0, 0), m_view.size).marginsRemoved(m_rulers.margins()).adjusted(room, room, -room, -room);
    const QPointF at = m_view.toView(mapPoint);
    if (inside.contains(at) || inside.isEmpty())
        return false;
    const QPointF target(std::clamp(at.x(), inside.left(), inside.right()),
                         std::clamp(at.y(), inside.top(), inside.bottom()));
    MapView view = m_view;
    view.panBy(wholePixels(target - at, pixelRatio));
    return panTo(view, false);
}

bool MapViewport::goBack()
{
    return m_history.canGoBack() && showStep(m_history.back());
}

bool MapViewport::goForward()
{
    return m_history.canGoForward() && showStep(m_history.forward());
}

bool MapViewport::showStep(const ViewHistory::Step &step)
{
    m_sinceStep.invalidate();
    m_fitted = step.isFitted;
    m_view = m_fitted ? fittedView() : step.view;
    m_history.replace(m_view);
    layOutRulers();
    return true;
}

} // namespace brannock

#pragma once
#include "ViewHistory.h"

#include <brannock/paint/MapRulers.h>
#include <QElapsedTimer>

namespace brannock {

/// The visible part of the map in a widget, its rulers, and the history of views. Limits the scale. A view of the whole
/// map remains one when the size, the flips or the rulers change.
///
/// Functions that return bool return true if the display has changed: another view, or another position in the history.
class MapViewport
{
public:
    /// scene must outlive this object.
    explicit MapViewport(const MapScene &scene)
        : m_scene(scene)
    {
    }

    const MapView &view() const { return m_view; }
    const MapRulers &rulers() const { return m_rulers; }
    const MapRulers::Layout &rulerLayout() const { return m_rulerLayout; }

    /// Call when the scene has other tubes: shows all of them and clears the history.
    void reset(const QSizeF &size, const MapRulers &rulers);
    void setRulers(const MapRulers &rulers);
    void setSize(const QSizeF &size);
    /// 1 or -1 (flipped). Applies to all views of the history.
    bool setOrientation(int x, int y);

    bool setView(const MapView &view);
    bool fit();
    /// Zooms so that the map point at this position does not move. Steps in quick succession are one step of the
    /// history.
    bool zoomAt(const QPointF &pos, double factor);
    /// A rectangle in map coordinates.
    bool zoomTo(const QRectF &mapRect);
    /// Moves the picture. Steps in quick succession are one step of the history.
    bool panBy(const QPointF &delta);
    /// Shows a view of the same scale. joined: as part of the previous step.
    bool panTo(const MapView &view, bool joined);
    /// Moves the picture by whole pixels until the map point is visible.
    bool reveal(const QPointF &mapPoint, double pixelRatio);
    bool goBack();
    bool goForward();
    bool canGoBack() const { return m_history.canGoBack(); }
    bool canGoForward() const { return m_history.canGoForward(); }

private:
    MapView fittedView() const;
    void refit();
    void boundScale(MapView &view, const QPointF &anchor) const;
    bool apply(const MapView &view, bool joined);
    bool applyJoined(const MapView &view);
    bool showStep(const ViewHistory::Step &step);
    void layOutRulers() { m_rulerLayout = m_rulers.layout(m_scene, m_view); }

    const MapScene &m_scene;
    MapView m_view;
    bool m_fitted = true; // shows the whole map and follows the widget's size
    ViewHistory m_history;
    QElapsedTimer m_sinceStep;
    MapRulers m_rulers;
    MapRulers::Layout m_rulerLayout;
};

/// The nearest vector of whole device pixels: a picture moved by it can be shifted instead of repainted.
QPointF wholePixels(const QPointF &vector, double pixelRatio);

} // namespace brannock

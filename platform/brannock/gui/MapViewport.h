#pragma once
#include "ViewHistory.h"

#include <brannock/paint/MapRulers.h>
#include <QElapsedTimer>

namespace brannock {

/// Which part of the map a widget shows, with the rulers that belong to it and the views before and after. Bounds the
/// scale. A view of the whole map stays one when the size, the flips or the rulers change.
///
/// Functions that return bool return true if there is something new to show: another view, or another place among the
/// views before and after.
class MapViewport
{
public:
    /// scene must live as long as this object.
    explicit MapViewport(const MapScene &scene)
        : m_scene(scene)
    {
    }

    const MapView &view() const { return m_view; }
    const MapRulers &rulers() const { return m_rulers; }
    const MapRulers::Layout &rulerLayout() const { return m_rulerLayout; }

    /// The scene has other tubes: shows all of them and forgets the views before.
    void reset(const QSizeF &size, const MapRulers &rulers);
    void setRulers(const MapRulers &rulers);
    void setSize(const QSizeF &size);
    /// 1 or -1 (flipped). Holds for the views before and after, too.
    bool setOrientation(int x, int y);

    bool setView(const MapView &view);
    bool fit();
    /// The point of the map under this place stays there. Steps that follow each other closely are one step back.
    bool zoomAt(const QPointF &pos, double factor);
    /// A rectangle in map coordinates.
    bool zoomTo(const QRectF &mapRect);
    /// Moves the picture. Steps that follow each other closely are one step back.
    bool panBy(const QPointF &delta);
    /// Shows a view of the same scale. joined: as part of the step before.
    bool panTo(const MapView &view, bool joined);
    /// Moves the picture by whole pixels until the point of the map is in sight.
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
    bool m_fitted = true; // shows the whole map and follows the size
    ViewHistory m_history;
    QElapsedTimer m_sinceStep;
    MapRulers m_rulers;
    MapRulers::Layout m_rulerLayout;
};

/// The nearest vector of whole device pixels: a picture that moves by it can be shifted instead of painted.
QPointF wholePixels(const QPointF &vector, double pixelRatio);

} // namespace brannock

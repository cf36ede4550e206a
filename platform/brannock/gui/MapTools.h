#pragma once
#include "MapViewport.h"

#include <optional>
#include <QFont>
#include <QPalette>

namespace brannock {

/// One mouse gesture, from its start until the button is released; one class for each kind. A tool paints itself over
/// the map and may move the view. It changes nothing else and returns the user's request at the end.
class MapTool
{
public:
    struct Result
    {
        std::optional<QList<qint32>> tubes; ///< to be selected
        std::optional<QRectF> area;         ///< to be shown, in map coordinates
    };

    MapTool() = default;
    MapTool(const MapTool &) = delete;
    MapTool &operator=(const MapTool &) = delete;
    virtual ~MapTool() = default;

    virtual void moveTo(const QPointF &pos) = 0;
    virtual Result result() const { return {}; }
    /// Called if the user cancels: restores the view.
    virtual void takeBack() {}
    /// The pointer's shape, if it differs from that of the widget.
    virtual std::optional<Qt::CursorShape> cursor() const { return std::nullopt; }
    /// The area painted by paint().
    virtual QRegion region() const { return {}; }
    virtual void paint(QPainter &, const QPalette &) const {}
};

/// Moves the view with the pointer.
class PanTool : public MapTool
{
public:
    PanTool(MapViewport &viewport, const QPointF &start, double pixelRatio);
    void moveTo(const QPointF &pos) override;
    void takeBack() override { m_viewport.panTo(m_startView, true); }
    std::optional<Qt::CursorShape> cursor() const override { return Qt::ClosedHandCursor; }

private:
    MapViewport &m_viewport;
    QPointF m_start;
    double m_pixelRatio;
    MapView m_startView;
};

/// Draws a band over the map: the rectangle from the start to the pointer.
class BandTool : public MapTool
{
public:
    BandTool(const MapViewport &viewport, const QPointF &start);
    void moveTo(const QPointF &pos) override;
    QRegion region() const override;
    void paint(QPainter &painter, const QPalette &palette) const override;

protected:
    QRectF area() const { return m_viewport.view().toMap(m_band.boundingRect()); }

    const MapViewport &m_viewport;
    QPointF m_start;
    QPolygonF m_band; // in viewport coordinates
};

/// Zooms to the rectangle.
class ZoomTool : public BandTool
{
public:
    using BandTool::BandTool;
    Result result() const override { return {std::nullopt, area()}; }
};

/// Selects the tubes in the rectangle and shows their number beside the pointer.
class RectangleTool : public BandTool
{
public:
    RectangleTool(const MapScene &scene, const MapViewport &viewport, const QPointF &start, const QFont &font);
    void moveTo(const QPointF &pos) override;
    Result result() const override { return {tubes(), std::nullopt}; }
    QRegion region() const override;
    void paint(QPainter &painter, const QPalette &palette) const override;

protected:
    virtual QList<qint32> tubes() const;
    void countTubes(const QPointF &pos);

    const MapScene &m_scene;

private:
    QFont m_font;
    QString m_count;
    QRectF m_countRect;
};

/// Selects the tubes inside a freehand line.
class LassoTool : public RectangleTool
{
public:
    LassoTool(const MapScene &scene, const MapViewport &viewport, const QPointF &start, const QFont &font);
    void moveTo(const QPointF &pos) override;

protected:
    QList<qint32> tubes() const override;
};

} // namespace brannock

#include "MapTools.h"

#include <brannock/paint/MapOverlay.h>

namespace brannock {

using namespace Qt::StringLiterals;

PanTool::PanTool(MapViewport &viewport, const QPointF &start, double pixelRatio)
    : m_viewport(viewport)
    , m_start(start)
    , m_pixelRatio(pixelRatio)
    , m_startView(viewport.view())
{
}

void PanTool::moveTo(const QPointF &pos)
{
    MapView view = m_startView;
    view.panBy(wholePixels(pos - m_start, m_pixelRatio));
    m_viewport.panTo(view, m_viewport.view() != m_startView);
}

BandTool::BandTool(const MapViewport &viewport, const QPointF &start)
    : m_viewport(viewport)
    , m_start(start)
{
}

void BandTool::moveTo(const QPointF &pos)
{
    m_band = QPolygonF(QRectF(m_start, pos).normalized());
}

QRegion BandTool::region() const
{
    return m_band.isEmpty() ? QRegion() : m_band.boundingRect().adjusted(-2, -2, 2, 2).toAlignedRect();
}

void BandTool::paint(QPainter &painter, const QPalette &palette) const
{
    if (!m_band.isEmpty())
        paintBand(painter, m_band, palette);
}

RectangleTool::RectangleTool(const MapScene &scene, const MapViewport &viewport, const QPointF &start,
                             const QFont &font)
    : BandTool(viewport, start)
    , m_scene(scene)
    , m_font(font)
{
}

void RectangleTool::moveTo(const QPointF &pos)
{
    BandTool::moveTo(pos);
    countTubes(pos);
}

QList<qint32> RectangleTool::tubes() const
{
    const QRectF rect = area();
    return m_scene.grid().inRect(rect.left(), rect.top(), rect.right(), rect.bottom());
}

void RectangleTool::countTubes(const QPointF &pos)
{
    const qsizetype count = tubes().size();
    m_count = count == 1 ? u"1 tube"_s : u"%1 tubes"_s.arg(count);
    m_countRect = countRect(m_count, m_font, pos, m_viewport.view().size);
}

QRegion RectangleTool::region() const
{
    const QRegion band = BandTool::region();
    return m_countRect.isEmpty() ? band : band | m_countRect.adjusted(-1, -1, 4, 5).toAlignedRect();
}

void RectangleTool::paint(QPainter &painter, const QPalette &palette) const
{
    BandTool::paint(painter, palette);
    if (!m_countRect.isEmpty())
        paintCount(painter, m_countRect, m_count, m_font, palette);
}

LassoTool::LassoTool(const MapScene &scene, const MapViewport &viewport, const QPointF &start, const QFont &font)
    : RectangleTool(scene, viewport, start, font)
{
    m_band.append(start);
}

void LassoTool::moveTo(const QPointF &pos)
{
    m_band.append(pos);
    countTubes(pos);
}

QList<qint32> LassoTool::tubes() const
{
    QList<QPointF> points;
    for (const QPointF &point : m_band)
        points.append(m_viewport.view().toMap(point));
    return m_scene.grid().inPolygon(points);
}

} // namespace brannock

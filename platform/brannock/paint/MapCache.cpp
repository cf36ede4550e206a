#include "MapCache.h"

#include <cmath>

namespace brannock {

namespace {

/// If more than one in this many tubes changed, painting everything is faster: a patch also repaints neighbours.
constexpr qsizetype kPatchShare = 12;
/// A patch may repaint this many tubes for each changed one.
constexpr double kTogether = 4;
constexpr qsizetype kMostRects = 64;
/// Margin of the stored picture in pixels: how far the view can be panned before everything is repainted.
constexpr int kMargin = 256;

QSize pixelSize(const MapView &view)
{
    return QSize(int(std::ceil(view.size.width())), int(std::ceil(view.size.height())));
}

} // namespace

QRegion MapCache::patch(const MapScene &scene, const MapScene::Change &change)
{
    const QRect whole(QPoint(0, 0), m_size);
    if (change.tubes.isEmpty() || !m_valid)
        return m_valid ? QRegion() : QRegion(whole);
    const bool few = change.tubes.size() * kPatchShare <= scene.numTube() || change.tubes.size() <= 4;
    if (!few && !change.onlySelected) {
        m_valid = false;
        return whole;
    }
    QImage picture = image();
    QList<QRect> rects;
    QRect around;
    for (const qint32 tube : change.tubes) {
        const QRect rect = MapPainter::tubeRect(scene, m_view, tube).toAlignedRect() & whole;
        if (rect.isEmpty())
            continue;
        around |= rect;
        rects.append(rect);
    }
    const double pitch = scene.pitch() * m_view.scale;
    const double tubesAround = double(around.width()) * around.height() / (pitch * pitch);
    // Every patch also repaints neighbours, so adjacent tubes are painted together.
    if (tubesAround < kTogether * double(rects.size()))
        rects = {around};
    if (change.onlySelected)
        m_painter.paintTubes(picture, scene, m_view, change.tubes);
    else {
        for (const QRect &rect : std::as_const(rects))
            m_painter.paint(picture, scene, m_view, rect, m_background);
    }
    // A region of thousands of rectangles costs more than its bounding rectangle.
    if (rects.size() > kMostRects)
        return around;
    QRegion changed;
    for (const QRect &rect : std::as_const(rects))
        changed |= rect;
    return changed;
}

bool MapCache::shift(const MapScene &scene, const MapView &view)
{
    MapView moved = m_view;
    moved.centre = view.centre;
    if (!(moved == view))
        return false;
    const QPointF exact = view.toView(m_view.centre) - m_view.toView(m_view.centre);
    const QPoint by = exact.toPoint();
    if (std::abs(exact.x() - by.x()) > 1e-3 || std::abs(exact.y() - by.y()) > 1e-3)
        return false;
    const QRect before(m_origin, m_size);
    const QRect now = before.translated(-by);
    if (!m_store.rect().contains(now) || !now.intersects(before))
        return false;
    m_origin = now.topLeft();
    m_view = view;
    QImage picture = image();
    for (const QRect &strip : QRegion(now) - before)
        m_painter.paint(picture, scene, m_view, strip.translated(-m_origin), m_background);
    return true;
}

void MapCache::reserve(const QSize &size)
{
    const QSize needed = size + QSize(2 * kMargin, 2 * kMargin);
    if (m_store.size() != needed)
        m_store = QImage(needed, QImage::Format_RGB32);
    m_origin = QPoint(kMargin, kMargin);
    m_size = m_store.isNull() ? QSize(0, 0) : size;
}

QImage MapCache::image()
{
    if (m_size.isEmpty())
        return QImage();
    uchar *first = m_store.bits() + m_origin.y() * m_store.bytesPerLine() + m_origin.x() * 4;
    return QImage(first, m_size.width(), m_size.height(), m_store.bytesPerLine(), QImage::Format_RGB32);
}

MapCache::Work MapCache::update(const MapScene &scene, const MapView &view, const QColor &background)
{
    if (m_background != background || m_size != pixelSize(view))
        m_valid = false;
    if (m_valid && m_view == view)
        return Work::None;
    if (m_valid && shift(scene, view))
        return Work::Shifted;
    reserve(pixelSize(view));
    m_view = view;
    m_background = background;
    m_valid = true;
    QImage picture = image();
    if (!picture.isNull())
        m_painter.paint(picture, scene, m_view, picture.rect(), m_background);
    return Work::Painted;
}

void MapCache::paintAside(QImage &image, const MapScene &scene, const MapView &view, const QColor &background)
{
    m_valid = false;
    m_painter.paint(image, scene, view, image.rect(), background);
}

} // namespace brannock

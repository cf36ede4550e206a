#include "MapCache.h"

#include <cmath>
#include <cstring>

namespace brannock {

namespace {

/// Painting everything is quicker when more than one in so many tubes has changed: a patch paints the neighbours, too.
constexpr qsizetype kPatchShare = 12;

QSize pixelSize(const MapView &view)
{
    return QSize(int(std::ceil(view.size.width())), int(std::ceil(view.size.height())));
}

/// Moves the picture within itself; what comes in at the sides is left as it was.
void scrollImage(QImage &image, const QPoint &by)
{
    const int width = image.width() - std::abs(by.x());
    const int height = image.height() - std::abs(by.y());
    const int fromX = std::max(0, -by.x());
    const int toX = std::max(0, by.x());
    for (int i = 0; i < height; ++i) {
        // Downwards from below, so that no line is overwritten before it has been moved.
        const int line = by.y() > 0 ? height - 1 - i : i;
        const int from = line + std::max(0, -by.y());
        const int to = line + std::max(0, by.y());
        std::memmove(image.scanLine(to) + toX * 4, image.constScanLine(from) + fromX * 4, size_t(width) * 4);
    }
}

} // namespace

QRegion MapCache::patch(const MapScene &scene, const MapScene::Change &change)
{
    const QRect whole = m_image.rect();
    if (change.tubes.isEmpty() || !m_valid)
        return m_valid ? QRegion() : QRegion(whole);
    const bool few = change.tubes.size() * kPatchShare <= scene.numTube() || change.tubes.size() <= 4;
    if (!few && !change.onlySelected) {
        m_valid = false;
        return whole;
    }
    QRegion changed;
    QRect around;
    for (const qint32 tube : change.tubes) {
        const QRect rect = MapPainter::tubeRect(scene, m_view, tube).toAlignedRect() & whole;
        if (rect.isEmpty())
            continue;
        around |= rect;
        // A region of thousands of rectangles costs more than the rectangle around them.
        if (change.tubes.size() <= 64)
            changed |= rect;
        if (!change.onlySelected)
            m_painter.paint(m_image, scene, m_view, rect, m_background);
    }
    if (change.onlySelected)
        m_painter.paintTubes(m_image, scene, m_view, change.tubes);
    return change.tubes.size() <= 64 ? changed : QRegion(around);
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
    if (std::abs(by.x()) > m_image.width() / 2 || std::abs(by.y()) > m_image.height() / 2)
        return false;
    scrollImage(m_image, by);
    m_view = view;
    const QRect whole = m_image.rect();
    for (const QRect &strip : QRegion(whole) - whole.translated(by))
        m_painter.paint(m_image, scene, m_view, strip, m_background);
    return true;
}

MapCache::Work MapCache::update(const MapScene &scene, const MapView &view, const QColor &background)
{
    if (m_background != background || m_image.size() != pixelSize(view))
        m_valid = false;
    if (m_valid && m_view == view)
        return Work::None;
    if (m_valid && shift(scene, view))
        return Work::Shifted;
    if (m_image.size() != pixelSize(view))
        m_image = QImage(pixelSize(view), QImage::Format_RGB32);
    m_view = view;
    m_background = background;
    m_valid = true;
    if (!m_image.isNull())
        m_painter.paint(m_image, scene, m_view, m_image.rect(), m_background);
    return Work::Painted;
}

} // namespace brannock

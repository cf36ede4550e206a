#include "WindowPixels.h"

#include <QPaintEngine>

namespace brannock {

QImage windowPixels(const QPainter &painter, const QRectF &rect)
{
    const QPaintEngine *engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster || engine->paintDevice()->devType() != QInternal::Image)
        return QImage();
    auto *device = static_cast<QImage *>(engine->paintDevice());
    if (device->format() != QImage::Format_RGB32 && device->format() != QImage::Format_ARGB32_Premultiplied)
        return QImage();
    // The device may be a view inside a larger window.
    const QRectF exact = painter.deviceTransform().mapRect(rect);
    const QRect pixels = exact.toRect();
    if (QRectF(pixels) != exact || pixels.isEmpty() || !device->rect().contains(pixels))
        return QImage();
    // bits() would detach a shared image; the window's own image is never shared.
    uchar *first = device->bits() + pixels.y() * device->bytesPerLine() + pixels.x() * 4;
    return QImage(first, pixels.width(), pixels.height(), device->bytesPerLine(), QImage::Format_RGB32);
}

} // namespace brannock

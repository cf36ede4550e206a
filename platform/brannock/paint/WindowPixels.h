#pragma once
#include <QImage>
#include <QPainter>

namespace brannock {

/// The pixels that a painter on a widget writes to for this rectangle of the widget, as an image that shares them: for
/// painting of whole windows, where a picture of one's own and its copy would cost as much as the painting itself. Null
/// when they are not to be had (another kind of device, a rectangle that does not fall on whole pixels). Whoever asks
/// must know that nothing lies over the rectangle, and must write opaque pixels only.
QImage windowPixels(const QPainter &painter, const QRectF &rect);

} // namespace brannock

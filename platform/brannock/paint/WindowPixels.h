#pragma once
#include <QImage>
#include <QPainter>

namespace brannock {

/// The pixels of the window behind a rectangle of the painted widget, as an image that shares them. For painting a
/// whole window, where an intermediate picture and its copy would cost as much as the painting. Null if not available
/// (another kind of device, or the rectangle is not on whole pixels). The caller must ensure that nothing lies over the
/// rectangle, and must write opaque pixels only.
QImage windowPixels(const QPainter &painter, const QRectF &rect);

} // namespace brannock

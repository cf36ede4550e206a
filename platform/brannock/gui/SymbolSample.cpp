#include "SymbolSample.h"

#include <brannock/paint/TubeArt.h>
#include <cmath>
#include <QPainter>
#include <QPainterPath>

using namespace Qt::StringLiterals;

namespace brannock {

SymbolSample::SymbolSample(const MapOptions &options, QWidget *parent)
    : QFrame(parent)
    , m_options(options)
{
    setAccessibleName(u"The symbol on the map"_s);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void SymbolSample::setMark(const TubeMark &mark)
{
    m_mark = mark;
    update();
}

void SymbolSample::paintTubes(QPainter &painter, const QRectF &area, double pitch) const
{
    // Painted in device pixels, like the map, so that discs are equally sharp.
    const double ratio = devicePixelRatioF();
    const TubeArt art = TubeArt::forPixels(m_options, pitch * ratio);
    painter.save();
    painter.setClipRect(area);
    painter.scale(1 / ratio, 1 / ratio);
    const double step = pitch * ratio;
    const double rowStep = step * std::sqrt(3.0) / 2;
    const QPointF corner = area.topLeft() * ratio + QPointF(step * 0.6, step * 0.6);
    const int rows = int(area.height() * ratio / rowStep) + 1;
    const int cols = int(area.width() * ratio / step) + 1;
    for (int row = 0; row <= rows; ++row) {
        for (int col = 0; col <= cols; ++col) {
            const QPointF exact = corner + QPointF(col * step + (row % 2 ? step / 2 : 0), row * rowStep);
            const bool marked = (row + 2 * col) % 3 != 0;
            const bool selected = row == 1 && col == 1;
            art.paintTube(painter, QPointF(std::round(exact.x()), std::round(exact.y())), marked ? m_mark : TubeMark(),
                          selected);
        }
    }
    painter.restore();
}

void SymbolSample::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF face = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(fromColourRef(m_options.mapColour));
    painter.drawRect(face);
    constexpr double kLargePitch = 26;
    constexpr double kSmallPitch = 13;
    const double middle = face.left() + face.width() * 0.62;
    paintTubes(painter, QRectF(face.topLeft(), QPointF(middle, face.bottom())).adjusted(1, 1, 0, 0), kLargePitch);
    paintTubes(painter, QRectF(QPointF(middle, face.top()), face.bottomRight()).adjusted(0, 1, 0, 0), kSmallPitch);
}

} // namespace brannock

#include "ColourWell.h"

#include <brannock/paint/MapColours.h>
#include <brannock/paint/TubeArt.h>
#include <QPainter>
#include <tarnwick/gui/ReturnKey.h>

using namespace Qt::StringLiterals;

namespace brannock {

ColourWell::ColourWell(QWidget *parent)
    : QPushButton(parent)
{
    setFixedSize(kSide, kSide);
    setAutoDefault(false);
    tarnwick::pressWithReturn(this);
    setText(u"&Color ..."_s);
    setToolTip(u"Choose another color"_s);
}

void ColourWell::setMark(ellery::Symbol symbol, const QColor &colour)
{
    m_symbol = symbol;
    m_colour = colour;
    setAccessibleDescription(colour.name());
    update();
}

void ColourWell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = inkOn(m_colour);
    const QRectF face = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const double darker = isDown() ? 0.18 : underMouse() ? 0.06 : 0;
    painter.setPen(QPen(mixed(m_colour, palette().color(QPalette::WindowText), 0.35), 1));
    painter.setBrush(mixed(m_colour, ink, darker));
    painter.drawRoundedRect(face, 6, 6);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink, 1.5, Qt::DotLine));
        painter.drawRoundedRect(face.adjusted(5, 5, -5, -5), 4, 4);
    }
    const double caption = fontMetrics().height() * 2.0;
    if (!m_symbol.isNone())
        paintSymbol(painter, {face.center().x(), face.top() + (face.height() - caption) / 2 + 4},
                    (face.height() - caption) * 0.42, m_symbol, ink);
    painter.setFont(font());
    painter.setPen(ink);
    painter.drawText(QRectF(face.left(), face.bottom() - caption, face.width(), caption - 4),
                     Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

} // namespace brannock

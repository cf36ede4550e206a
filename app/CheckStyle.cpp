#include "CheckStyle.h"

#include <brannock/paint/MapColours.h>

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace app {

void paintCheckBox(QPainter &painter, const QRect &rect, Qt::CheckState state, const QColor &ink, const QColor &ground)
{
    const QRectF box = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(brannock::mixed(ink, ground, 0.4), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(box, 2, 2);
    painter.setPen(QPen(ink, box.width() / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (state == Qt::Checked) {
        const QPointF tick[] = {box.topLeft() + QPointF(box.width() * 0.22, box.height() * 0.55),
                                box.topLeft() + QPointF(box.width() * 0.42, box.height() * 0.75),
                                box.topLeft() + QPointF(box.width() * 0.79, box.height() * 0.27)};
        painter.drawPolyline(tick, int(std::size(tick)));
    } else if (state == Qt::PartiallyChecked) {
        painter.drawLine(box.topLeft() + QPointF(box.width() * 0.28, box.height() / 2),
                         box.topLeft() + QPointF(box.width() * 0.72, box.height() / 2));
    }
    painter.restore();
}

CheckStyle::CheckStyle()
    : QProxyStyle(QStyleFactory::create(u"Fusion"_s))
{
}

int CheckStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *data) const
{
    return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

void CheckStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    if (element != PE_IndicatorCheckBox) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const auto group = option->state & State_Enabled ? QPalette::Active : QPalette::Disabled;
    QColor ground = option->palette.color(group, QPalette::Base);
    if (option->state & State_Sunken)
        ground = brannock::mixed(ground, option->palette.color(QPalette::Highlight), 0.3);
    painter->fillRect(option->rect.adjusted(1, 1, -1, -1), ground);
    const Qt::CheckState state = option->state & State_NoChange ? Qt::PartiallyChecked
                                 : option->state & State_On     ? Qt::Checked
                                                                : Qt::Unchecked;
    paintCheckBox(*painter, option->rect, state, option->palette.color(group, QPalette::WindowText), ground);
}

} // namespace app

#include "CheckStyle.h"

#include <brannock/paint/MapColours.h>

#include <QEvent>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QtMath>

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

namespace {

/// A text with "&" before the letter that is underlined.
struct MnemonicText
{
    explicit MnemonicText(const QString &text)
    {
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i] == u'&' && ++i < text.size() && text[i] != u'&' && place < 0)
                place = plain.size();
            if (i < text.size())
                plain.append(text[i]);
        }
    }

    QString plain;
    qsizetype place = -1; ///< of the letter in plain; -1 if there is none
};

void paintFocusFrame(QPainter &painter, const QStyleOption &option, const QRect &rect)
{
    painter.save();
    painter.setPen(option.palette.color(QPalette::Active, QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

} // namespace

CheckStyle::CheckStyle()
    : QProxyStyle(QStyleFactory::create(u"Fusion"_s))
{
}

// Qt marks the focus of buttons and boxes only in windows with this attribute: it is set when Tab is pressed, and
// cleared when the window is shown.
void CheckStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (!widget->isWindow())
        return;
    widget->setAttribute(Qt::WA_KeyboardFocusChange);
    widget->installEventFilter(this);
}

void CheckStyle::unpolish(QWidget *widget)
{
    widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
}

bool CheckStyle::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType())
        static_cast<QWidget *>(watched)->setAttribute(Qt::WA_KeyboardFocusChange);
    return QProxyStyle::eventFilter(watched, event);
}

int CheckStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *data) const
{
    return hint == SH_EtchDisabledText ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

// Qt draws the underlined letter as a run of its own, without kerning to the next letter, but computes the size without
// the underline: "To" is then wider than its label, and the end of the text is cut off. So the text is drawn as it was
// measured and the line is drawn below it.
void CheckStyle::drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool isEnabled,
                              const QString &text, QPalette::ColorRole role) const
{
    constexpr int kNotHere = Qt::TextHideMnemonic | Qt::TextWordWrap;
    const bool isUnderlined = (flags & Qt::TextShowMnemonic) && !(flags & kNotHere);
    const MnemonicText mnemonic(isUnderlined ? text : QString());
    if (mnemonic.place < 0 || text.contains(u'\n') || text.isRightToLeft()) {
        QProxyStyle::drawItemText(painter, rect, flags, palette, isEnabled, text, role);
        return;
    }
    const int hidden = flags | Qt::TextHideMnemonic;
    QProxyStyle::drawItemText(painter, rect, hidden, palette, isEnabled, text, role);
    const QFontMetricsF metrics(painter->font(), painter->device());
    const QRectF drawn = metrics.boundingRect(QRectF(rect), hidden, text);
    const qreal left = drawn.left() + metrics.horizontalAdvance(mnemonic.plain.left(mnemonic.place));
    const qreal right = drawn.left() + metrics.horizontalAdvance(mnemonic.plain.left(mnemonic.place + 1));
    const int y = qRound(drawn.top() + metrics.ascent()) + qCeil(metrics.underlinePos());
    const QColor colour = role == QPalette::NoRole ? painter->pen().color() : palette.color(role);
    painter->fillRect(QRect(QPoint(qRound(left), y), QPoint(qRound(right) - 1, y)), colour);
}

void CheckStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    // Fusion gives the button with the focus only the edge of the default button.
    if (element == CE_PushButton && option->state & State_HasFocus) {
        constexpr int kInset = 3;
        paintFocusFrame(*painter, *option, option->rect.adjusted(kInset, kInset, -kInset, -kInset));
    }
}

void CheckStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    if (element != PE_IndicatorCheckBox) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_Frame && option->state & State_HasFocus)
            paintFocusFrame(*painter, *option, option->rect);
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

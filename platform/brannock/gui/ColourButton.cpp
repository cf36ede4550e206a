#include "ColourButton.h"

#include <QPainter>
#include <QStyleOptionButton>
#include <tarnwick/gui/ReturnKey.h>

namespace brannock {

using namespace Qt::StringLiterals;

static constexpr int kMargin = 5;

ColourButton::ColourButton(ColourChooser &chooser, QWidget *parent)
    : QPushButton(parent)
    , m_chooser(chooser)
{
    setAutoDefault(false);
    tarnwick::pressWithReturn(this);
    setColour(m_colour);
    connect(this, &QPushButton::clicked, this, &ColourButton::choose);
}

void ColourButton::setColour(const QColor &colour)
{
    m_colour = colour;
    setText(colour.name().toUpper());
    setAccessibleDescription(text());
    update();
}

QSize ColourButton::sizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(u"#MMMMMM"_s) + 2 * fontMetrics().height() + 4 * kMargin,
                 QPushButton::sizeHint().height());
}

void ColourButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
    const QRect inside = rect().adjusted(kMargin + 2, kMargin, -kMargin - 2, -kMargin);
    QRect swatch = inside;
    swatch.setWidth(2 * fontMetrics().height());
    const bool isActive = isEnabled();
    painter.setOpacity(isActive ? 1.0 : 0.4);
    QColor frame = palette().color(QPalette::ButtonText);
    frame.setAlphaF(0.5F);
    painter.setPen(frame);
    painter.setBrush(m_colour);
    painter.drawRect(swatch.adjusted(0, 0, -1, -1));
    painter.setOpacity(1);
    painter.setPen(palette().color(isActive ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(inside.adjusted(swatch.width() + kMargin, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, text());
}

void ColourButton::choose()
{
    const QColor before = m_colour;
    follow(m_chooser.chooseTrying(this, before, [this](const QColor &tried) { follow(tried); }).value_or(before));
}

void ColourButton::follow(const QColor &colour)
{
    if (!colour.isValid() || colour == m_colour)
        return;
    setColour(colour);
    Q_EMIT colourChanged(colour);
}

} // namespace brannock

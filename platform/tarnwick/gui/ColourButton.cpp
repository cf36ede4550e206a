#include "ColourButton.h"

#include <QColorDialog>
#include <QPainter>
#include <QStyleOptionButton>

namespace tarnwick {

using namespace Qt::StringLiterals;

static constexpr int kMargin = 5;

ColourButton::ColourButton(QWidget *parent)
    : QPushButton(parent)
{
    setAutoDefault(false);
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
    QColorDialog dialog(before, this);
    dialog.setObjectName(u"colourDialog"_s);
    dialog.setWindowTitle(accessibleName());
    connect(&dialog, &QColorDialog::currentColorChanged, this, &ColourButton::follow);
    follow(dialog.exec() == QDialog::Accepted ? dialog.selectedColor() : before);
}

void ColourButton::follow(const QColor &colour)
{
    if (!colour.isValid() || colour == m_colour)
        return;
    setColour(colour);
    Q_EMIT colourChanged(colour);
}

} // namespace tarnwick

#include "TextPanel.h"

#include <QEvent>
#include <QFontDatabase>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace app {

TextPanel::TextPanel(const QString &name, const QString &accessibleName, const QString &sample, QWidget *parent)
    : QFrame(parent)
    , m_sample(sample)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TextPanel::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleDescription(text);
    setToolTip(text.trimmed());
    update();
}

QSize TextPanel::textSize(const QString &text) const
{
    const QStringList lines = text.split(u'\n');
    int width = 0;
    for (const QString &line : lines)
        width = std::max(width, fontMetrics().horizontalAdvance(line));
    // One character wider: widths are rounded, and a line that just fits must not be cut.
    width += fontMetrics().horizontalAdvance(u'0');
    return {width, int(lines.size()) * fontMetrics().lineSpacing()};
}

QSize TextPanel::sizeHint() const
{
    const int around = 2 * (kPadding + frameWidth());
    return textSize(m_sample) + QSize(around, around);
}

QSize TextPanel::minimumSizeHint() const
{
    // A smaller width would show only the labels.
    return QSize(sizeHint().width() * 5 / 6, sizeHint().height());
}

void TextPanel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    const QRect area = contentsRect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
    int y = area.top() + fontMetrics().ascent();
    for (const QString &line : m_text.split(u'\n')) {
        // Only the value is cut: a part of a label has no meaning.
        const QString label = line.left(line.indexOf(u": "_s) + 1);
        const int left = fontMetrics().horizontalAdvance(label);
        painter.drawText(area.left(), y, label);
        painter.drawText(area.left() + left, y,
                         fontMetrics().elidedText(line.mid(label.size()), Qt::ElideMiddle, area.width() - left));
        y += fontMetrics().lineSpacing();
    }
}

void TextPanel::changeEvent(QEvent *event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        updateGeometry();
}

} // namespace app

#include "ElidedLabel.h"

#include <QPainter>
#include <QRegularExpression>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace tarnwick {

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::setLine(const QString &text)
{
    static const QRegularExpression breaks(u"\\s*[\\r\\n\\t]+\\s*"_s);
    QString line = text.trimmed();
    line.replace(breaks, u" "_s);
    setText(line);
    updateTip();
}

void ElidedLabel::updateTip()
{
    const bool fits = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
    setToolTip(fits ? QString() : text());
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shown,
                          foregroundRole());
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    updateTip();
}

} // namespace tarnwick

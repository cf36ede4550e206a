#include "StatusLine.h"

#include <QPainter>
#include <QRegularExpression>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace app {

StatusLine::StatusLine(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void StatusLine::say(const QString &text)
{
    static const QRegularExpression breaks(u"\\s*[\\r\\n\\t]+\\s*"_s);
    QString line = text.trimmed();
    line.replace(breaks, u" "_s);
    if (m_joins && !line.isEmpty() && !this->text().isEmpty())
        line = this->text() + u"  "_s + line;
    setText(line);
    updateTip();
}

void StatusLine::endWork()
{
    if (text().endsWith(u"..."_s))
        forget();
}

void StatusLine::updateTip()
{
    const bool fits = fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
    setToolTip(fits ? QString() : text());
}

QSize StatusLine::minimumSizeHint() const
{
    // A long text must not make the window wider.
    return {fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height()};
}

void StatusLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shown,
                          foregroundRole());
}

void StatusLine::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    updateTip();
}

} // namespace app

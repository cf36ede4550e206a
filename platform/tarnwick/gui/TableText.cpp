#include "TableText.h"

#include <QApplication>
#include <QWidget>

namespace tarnwick {

TableText &TableText::instance()
{
    static TableText text;
    return text;
}

void TableText::setPercent(int percent)
{
    constexpr int kLeast = 50;
    constexpr int kMost = 300;
    if (percent < kLeast || percent > kMost || percent == m_percent)
        return;
    m_percent = percent;
    Q_EMIT changed();
}

void TableText::follow(QWidget *table)
{
    if (instance().m_percent != 100)
        apply(table);
    connect(&instance(), &TableText::changed, table, [table] { apply(table); });
}

void TableText::apply(QWidget *table)
{
    QFont font = QApplication::font(table);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * instance().m_percent / 100);
    else
        font.setPixelSize(font.pixelSize() * instance().m_percent / 100);
    table->setFont(font);
}

} // namespace tarnwick

#include "SymbolDelegate.h"

#include "CheckStyle.h"
#include "LegendModel.h"

#include <brannock/paint/MapColours.h>

#include <QApplication>
#include <QPainter>

namespace app {

namespace {

constexpr double kSwatchShare = 0.86; ///< fraction of the row's height
constexpr double kHiddenOpacity = 0.45;

QRect checkRect(const QStyleOptionViewItem &option)
{
    const QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    return style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, option.widget);
}

void paintCheck(QPainter &painter, const QRect &rect, bool checked, const QStyleOptionViewItem &option)
{
    const bool selected = option.state & QStyle::State_Selected;
    paintCheckBox(painter, rect, checked ? Qt::Checked : Qt::Unchecked,
                  option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text),
                  option.palette.color(selected ? QPalette::Highlight : QPalette::Base));
}

/// Paints a disc in the colour of the mark with its symbol, filling a square.
void paintMark(QPainter &painter, const QRectF &square, const ellery::TubeMark &mark)
{
    const QColor colour = brannock::fromColourRef(mark.colour);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(brannock::mixed(colour, Qt::black, 0.35), 1));
    painter.setBrush(colour);
    painter.drawEllipse(square.adjusted(0.5, 0.5, -0.5, -0.5));
    QFont font = painter.font();
    font.setBold(true);
    font.setItalic(false);
    font.setPixelSize(std::max(6, int(square.height() * 0.66)));
    painter.setFont(font);
    painter.setPen(brannock::inkOn(colour));
    painter.drawText(square, Qt::AlignCenter, mark.symbol.text());
    painter.restore();
}

} // namespace

void SymbolDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem full = option;
    initStyleOption(&full, index);
    const QRect check = checkRect(full);
    const bool shown = full.checkState == Qt::Checked;
    // The check box of the style is hardly visible in dark palettes, so only the background is painted by the style.
    full.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    const QStyle *style = full.widget ? full.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &full, painter, full.widget);
    paintCheck(*painter, check, shown, full);

    const double side = option.rect.height() * kSwatchShare;
    const double left = check.right() + 1 + (option.rect.right() - check.right() - side) / 2;
    const QRectF square(left, option.rect.top() + (option.rect.height() - side) / 2, side, side);
    painter->setOpacity(shown ? 1.0 : kHiddenOpacity);
    paintMark(*painter, square, index.data(LegendModel::MarkRole).value<ellery::TubeMark>());
    painter->setOpacity(1.0);
}

bool SymbolDelegate::isOnSymbol(const QStyleOptionViewItem &option, const QModelIndex &index, const QPoint &place) const
{
    QStyleOptionViewItem full = option;
    initStyleOption(&full, index);
    return option.rect.contains(place) && place.x() > checkRect(full).right() + 1;
}

QSize SymbolDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem full = option;
    initStyleOption(&full, index);
    full.rect = QRect(0, 0, 200, QFontMetrics(option.font).height() + 8);
    return QSize(checkRect(full).right() + full.rect.height() + 10, full.rect.height());
}

} // namespace app

#pragma once
#include <QStyledItemDelegate>

namespace app {

/// Paints the first column of the legend: the check box, and the symbol as on the map.
class SymbolDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// True if a position in the cell is on the symbol and not on the check box.
    bool isOnSymbol(const QStyleOptionViewItem &option, const QModelIndex &index, const QPoint &place) const;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace app

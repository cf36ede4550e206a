#pragma once
#include <QStyledItemDelegate>

namespace app {

/// Paints the legend's first column: the check box, and the symbol as it looks on the map.
class SymbolDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Whether a place in the cell is on the symbol and not on the check box.
    bool isOnSymbol(const QStyleOptionViewItem &option, const QModelIndex &index, const QPoint &place) const;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace app

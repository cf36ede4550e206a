#pragma once
#include <QStyledItemDelegate>

namespace tarnwick {

/// Paints the cells of a JTableWin and creates their editors. Text is drawn directly for speed, since each scroll step
/// repaints a screen of cells.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

    /// Characters of a cell that are measured, and shown in its tip.
    static constexpr qsizetype kLongestMeasured = 2000;
    /// Margin beside the text in pixels, for a font of that height.
    static int margin(const QFontMetrics &metrics) { return std::max(3, metrics.height() / 4); }
};

} // namespace tarnwick

#include "GridAccessible.h"

#include "AccessibleItems.h"

#include <tarnwick/GridModel.h>

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QPersistentModelIndex>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// The model of a JTableWin.
GridModel &gridOf(const QAbstractItemView &view)
{
    return *static_cast<GridModel *>(view.model());
}

/// One cell; created when a screen reader requests it.
class AccessibleCell : public AccessibleItem, public QAccessibleTableCellInterface
{
public:
    AccessibleCell(QAbstractItemView &table, const QModelIndex &index)
        : AccessibleItem(table)
        , m_table(table)
        , m_index(index)
    {
    }

    bool isValid() const override { return hasOwner() && m_index.isValid(); }
    QString text(QAccessible::Text kind) const override
    {
        if (!isValid())
            return {};
        // The value comes first, since users want to hear it when they move from cell to cell.
        if (kind == QAccessible::Name || kind == QAccessible::Value)
            return m_index.data().toString();
        if (kind == QAccessible::Description)
            return u"%1, row %2"_s.arg(gridOf(m_table).column(m_index.column()).title).arg(m_index.row() + 1);
        return kind == QAccessible::Help ? m_index.data(Qt::ToolTipRole).toString() : QString();
    }
    void setText(QAccessible::Text kind, const QString &text) override
    {
        if (isValid() && kind == QAccessible::Value)
            gridOf(m_table).setData(m_index, text);
    }
    QRect rect() const override
    {
        if (!isValid())
            return {};
        const QRect cell = m_table.visualRect(m_index);
        return {m_table.viewport()->mapToGlobal(cell.topLeft()), cell.size()};
    }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface *>(this) : nullptr;
    }

    bool isSelected() const override { return isValid() && m_table.selectionModel()->isSelected(m_index); }
    QList<QAccessibleInterface *> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_index.column(); }
    int rowIndex() const override { return m_index.row(); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

protected:
    void describe(QAccessible::State &state) const override
    {
        state.focusable = true;
        state.selectable = true;
        state.focused = m_table.hasFocus() && m_table.currentIndex() == m_index;
        state.selected = m_table.selectionModel()->isSelected(m_index);
        state.editable = m_index.flags().testFlag(Qt::ItemIsEditable);
        state.readOnly = !state.editable;
    }

private:
    QAbstractItemView &m_table; ///< used only while isValid()
    QPersistentModelIndex m_index;
};

class AccessibleGrid : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    static constexpr const char *kWidgetClass = "tarnwick::JTableWin";
    explicit AccessibleGrid(QWidget *table)
        : QAccessibleWidget(table, QAccessible::Table)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QAccessibleInterface *cellAt(int row, int column) const override
    {
        const QModelIndex index = rowCount() > 0 ? gridOf(view()).index(row, column) : QModelIndex();
        if (!index.isValid())
            return nullptr;
        const qint64 key = qint64(row) * columnCount() + column;
        return m_cells.get(key, [&] { return new AccessibleCell(view(), index); });
    }
    int childCount() const override { return rowCount() * columnCount(); }
    QAccessibleInterface *child(int index) const override
    {
        return columnCount() > 0 && index >= 0 ? cellAt(index / columnCount(), index % columnCount()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        auto *cell = const_cast<QAccessibleInterface *>(child)->tableCellInterface();
        return cell ? cell->rowIndex() * columnCount() + cell->columnIndex() : -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        const QModelIndex index = view().indexAt(view().viewport()->mapFromGlobal(QPoint(x, y)));
        return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
    }
    QAccessibleInterface *focusChild() const override
    {
        const QModelIndex index = view().currentIndex();
        return index.isValid() ? cellAt(index.row(), index.column()) : nullptr;
    }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QString columnDescription(int column) const override
    {
        return column < columnCount() ? gridOf(view()).column(column).title : QString();
    }
    QString rowDescription(int row) const override { return QString::number(row + 1); }
    // A table that is being destroyed has no model any more.
    int columnCount() const override { return view().model() ? view().model()->columnCount() : 0; }
    int rowCount() const override { return view().model() ? view().model()->rowCount() : 0; }
    int selectedCellCount() const override { return 0; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return int(selectedRows().size()); }
    QList<QAccessibleInterface *> selectedCells() const override { return {}; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override
    {
        QList<int> rows;
        for (const QItemSelectionRange &range : view().selectionModel()->selection()) {
            for (int row = range.top(); row <= range.bottom(); ++row)
                rows.append(row);
        }
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
        return rows;
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override { return view().selectionModel()->isRowSelected(row); }
    bool selectRow(int row) override
    {
        view().setCurrentIndex(gridOf(view()).index(row, 0));
        return true;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override
    {
        view().selectionModel()->select(gridOf(view()).index(row, 0),
                                        QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
        return true;
    }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override { m_cells.forget(); }

private:
    QAbstractItemView &view() const { return *static_cast<QAbstractItemView *>(widget()); }
    mutable AccessibleItems<qint64> m_cells{5000};
};

} // namespace

void installGridAccessibility()
{
    installAccessibility<AccessibleGrid>();
}

} // namespace tarnwick

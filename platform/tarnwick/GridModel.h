#pragma once
#include "base/Progress.h"
#include "GridFilter.h"
#include "GridSource.h"

#include <QAbstractTableModel>

#include <limits>
#include <vector>

namespace tarnwick {

/// Model of all tables of the program: a GridSource in stored, sorted or filtered order. In stored order it uses no
/// memory per row; a sorted or filtered order uses four bytes for each shown row.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Role {
        ValueRole = Qt::UserRole, ///< GridSource::value()
        ColoursRole,              ///< RowColours as QVariant
        WhyNotEditableRole        ///< empty if the cell can be edited
    };
    struct SortKey
    {
        int column;
        Qt::SortOrder order;
        bool operator==(const SortKey &) const = default;
    };

    explicit GridModel(QObject *parent = nullptr)
        : QAbstractTableModel(parent)
    {
    }
    /// The source must outlive the model or be replaced first. Null for an empty table.
    void setSource(GridSource *source);
    GridSource *source() const { return m_source; }

    /// Call after the source has other rows or columns. Removes sorting and filter.
    void reload();
    /// Call after the source has other rows in the same columns: sorts and filters them as before.
    void refreshRows();
    /// Call after rows were added at the end of a source that grows while it is shown. A sorted or filtered order does
    /// not contain them.
    void noteAppended();
    /// Call after cells of the source's row changed, except by setData().
    void noteRowChanged(int sourceRow);
    /// Call after cells of any rows changed, while rows and order stayed the same.
    void noteAllChanged();

    /// Converts between shown rows and source rows; -1 for a row that is not shown.
    int sourceRow(int row) const
    {
        if (m_hasOrder)
            return size_t(row) < m_order.size() ? m_order[size_t(row)] : -1;
        return row < m_changedRow ? row : movedRow(row);
    }
    int shownRow(int sourceRow) const;
    /// Text across all columns of a shown row; empty for a row with cells.
    QString lineText(int row) const { return m_source->lineText(sourceRow(row)); }
    int totalRows() const { return m_source ? m_source->rowCount() : 0; }
    bool isFiltered() const { return !m_filters.isEmpty(); }

    /// Sorts by several keys, the most significant first. Rows with equal keys keep their stored order. An empty list
    /// restores the stored order. Throws Cancelled if the progress stops it; the order is then unchanged.
    void sortBy(const QList<SortKey> &keys, Progress *progress = nullptr);
    const QList<SortKey> &sortKeys() const { return m_keys; }
    /// Shows the rows that meet all conditions, one text per column (see GridFilter). Throws Cancelled like sortBy().
    void filterBy(const QStringList &typed, Progress *progress = nullptr);
    const QStringList &filters() const { return m_filters; }

    /// Next cell that contains the text, in reading order after (or before) `from`, continuing at the other end. Case
    /// is ignored. Invalid if there is none.
    QModelIndex find(const QString &text, const QModelIndex &from, bool forward, Progress *progress = nullptr) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    bool insertRows(int row, int count, const QModelIndex &parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;
    /// Deletes many rows of the source in time proportional to the number of shown rows. Views show no rows meanwhile.
    /// Stops at the first row that cannot be deleted and returns false. Throws Cancelled if the progress stops it. Rows
    /// that were deleted until then stay deleted.
    bool removeSourceRows(QList<int> rows, Progress *progress = nullptr);
    const GridColumn &column(int column) const { return m_columns[column]; }
    GridColumn cellEditor(const QModelIndex &index) const
    {
        return m_source->cellEditor(sourceRow(index.row()), index.column());
    }
    /// Titles of all columns.
    QStringList titles() const;

Q_SIGNALS:
    /// Emitted after sorting or filtering has changed the order and the model was reset.
    void orderChanged();

private:
    void readColumns();
    std::vector<qint32> filteredRows(const QStringList &typed, Progress *progress) const;
    void sortRows(std::vector<qint32> &rows, const QList<SortKey> &keys, Progress *progress) const;
    void setOrder(const QList<SortKey> &keys, const QStringList &filters, Progress *progress);
    int movedRow(int row) const;
    void beginShift(int row, int by);
    void endShift(int row, int by);

    GridSource *m_source = nullptr;
    QList<GridColumn> m_columns;
    std::vector<qint32> m_order; ///< source rows in shown order; used if m_hasOrder
    bool m_hasOrder = false;
    int m_rows = 0; ///< number of source rows as known to the views
    /// Valid while views are informed of a row that the source has already inserted or deleted: its number, and the
    /// shift of the rows behind it.
    int m_changedRow = std::numeric_limits<int>::max();
    int m_shift = 0;
    QList<SortKey> m_keys;
    QStringList m_filters;
};

} // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::RowColours)

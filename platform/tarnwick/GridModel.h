#pragma once
#include "GridFilter.h"
#include "GridSource.h"
#include "Progress.h"

#include <QAbstractTableModel>

#include <limits>
#include <vector>

namespace tarnwick {

/// The model of every table of the program: a GridSource in stored, sorted or filtered order. In stored order nothing
/// is kept for a row; a sorted or filtered order keeps four bytes for each row that is shown.
class GridModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Role {
        ValueRole = Qt::UserRole, ///< GridSource::value()
        ColoursRole,              ///< RowColours as QVariant
        WhyNotEditableRole        ///< empty when the cell can be edited
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
    /// The source must outlive the model or be replaced. Null for an empty table.
    void setSource(GridSource *source);
    GridSource *source() const { return m_source; }

    /// The source has other rows or columns than before. Sorting and filter are given up.
    void reload();
    /// Rows were added at the end of the source; the order that is shown does not contain them when it is sorted or
    /// filtered. For sources that still grow while they are shown.
    void noteAppended();
    /// Cells of the source's row changed otherwise than by setData().
    void noteRowChanged(int sourceRow);
    /// Cells of every row may have changed; rows and order are as before.
    void noteAllChanged();

    /// From the row that is shown to the row of the source, and back; -1 for one that is not shown.
    int sourceRow(int row) const
    {
        return m_hasOrder ? m_order[size_t(row)] : row < m_changedRow ? row : movedRow(row);
    }
    int shownRow(int sourceRow) const;
    int totalRows() const { return m_source ? m_source->rowCount() : 0; }
    bool isFiltered() const { return !m_filters.isEmpty(); }

    /// Sorts by several keys, the first one counting most; rows that are equal keep their stored order. Empty for the
    /// stored order. Throws Cancelled when the progress stops it; the order is then as before.
    void sortBy(const QList<SortKey> &keys, Progress *progress = nullptr);
    const QList<SortKey> &sortKeys() const { return m_keys; }
    /// Shows the rows that meet every condition, one text a column (see GridFilter). Cancels as sortBy().
    void filterBy(const QStringList &typed, Progress *progress = nullptr);
    const QStringList &filters() const { return m_filters; }

    /// The next cell whose text contains the text, in reading order after (or before) `from`, going round at the end.
    /// Letter case does not matter. Invalid when there is none.
    QModelIndex find(const QString &text, const QModelIndex &from, bool forward, Progress *progress = nullptr) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    bool insertRows(int row, int count, const QModelIndex &parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex &parent = {}) override;
    const GridColumn &column(int column) const { return m_columns[column]; }

Q_SIGNALS:
    /// The shown order was changed by sorting or filtering (after the model was reset).
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
    std::vector<qint32> m_order; ///< source rows in the order shown, when m_hasOrder
    bool m_hasOrder = false;
    int m_rows = 0; ///< of the source, as views know it
    /// While views are told of a row that the source has inserted or deleted already: its place, and by how many rows
    /// those behind it have moved.
    int m_changedRow = std::numeric_limits<int>::max();
    int m_shift = 0;
    QList<SortKey> m_keys;
    QStringList m_filters;
};

} // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::RowColours)

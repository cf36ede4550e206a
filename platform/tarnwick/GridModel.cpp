#include "GridModel.h"

#include <QDateTime>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

void GridModel::setSource(GridSource *source)
{
    beginResetModel();
    m_source = source;
    readColumns();
    endResetModel();
}

void GridModel::reload()
{
    setSource(m_source);
}

void GridModel::refreshRows()
{
    setOrder(QList<SortKey>(m_keys), QStringList(m_filters), nullptr);
}

void GridModel::readColumns()
{
    m_columns.clear();
    for (int i = 0; m_source && i < m_source->columnCount(); ++i)
        m_columns.append(m_source->column(i));
    m_order = {};
    m_hasOrder = false;
    m_keys.clear();
    m_filters.clear();
    m_rows = totalRows();
}

void GridModel::noteAppended()
{
    const int rows = totalRows();
    if (m_hasOrder || rows <= m_rows) {
        m_rows = std::max(m_rows, rows);
        return;
    }
    beginInsertRows({}, m_rows, rows - 1);
    m_rows = rows;
    endInsertRows();
}

void GridModel::noteRowChanged(int sourceRow)
{
    if (const int row = shownRow(sourceRow); row >= 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void GridModel::noteAllChanged()
{
    if (rowCount() > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int GridModel::shownRow(int sourceRow) const
{
    if (!m_hasOrder)
        return sourceRow >= 0 && sourceRow < m_rows ? sourceRow : -1;
    const auto found = std::find(m_order.begin(), m_order.end(), sourceRow);
    return found == m_order.end() ? -1 : int(found - m_order.begin());
}

int GridModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return m_hasOrder ? int(m_order.size()) : m_rows;
}

QStringList GridModel::titles() const
{
    QStringList titles;
    for (const GridColumn &column : m_columns)
        titles.append(column.title);
    return titles;
}

int GridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant GridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return {};
    const int row = sourceRow(index.row());
    const int column = index.column();
    if (row < 0)
        return {};
    switch (role) {
    case Qt::DisplayRole: {
        const QString line = m_source->lineText(row);
        return line.isEmpty() ? m_source->text(row, column) : line;
    }
    case Qt::EditRole:
        return m_source->editText(row, column);
    case Qt::TextAlignmentRole: {
        static constexpr Qt::AlignmentFlag kFlags[] = {Qt::AlignHCenter, Qt::AlignLeft, Qt::AlignRight};
        return QVariant(int(kFlags[size_t(m_columns[column].align)] | Qt::AlignVCenter));
    }
    case Qt::AccessibleDescriptionRole: // what a colour or mark says
        return m_source->tip(row, column);
    case Qt::ToolTipRole: {
        const QString tip = m_source->tip(row, column);
        return tip.isEmpty() ? m_source->whyNotEditable(row, column) : tip;
    }
    case ValueRole:
        return m_source->value(row, column);
    case ColoursRole:
        return QVariant::fromValue(m_source->colours(row));
    case WhyNotEditableRole:
        return m_source->whyNotEditable(row, column);
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return section < m_columns.size() ? m_columns[section].title : QString();
}

Qt::ItemFlags GridModel::flags(const QModelIndex &index) const
{
    // While many rows are being deleted, a view can ask about a row that the model no longer has.
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    const int row = sourceRow(index.row());
    if (row >= 0 && m_source->whyNotEditable(row, index.column()).isEmpty())
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool GridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    const int row = sourceRow(index.row());
    const QString text = value.toString();
    if (text == m_source->editText(row, index.column()))
        return true;
    const bool isStored = m_source->setText(row, index.column(), text);
    // The edit may change other cells of the row, and the text of a refused edit must be replaced.
    Q_EMIT dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1));
    return isStored;
}

bool GridModel::insertRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || count != 1 || !m_source || !m_source->whyNotInsertable().isEmpty() || row < 0 ||
        row > rowCount())
        return false;
    const int at = row < rowCount() ? sourceRow(row) : totalRows();
    if (!m_source->insertRow(at))
        return false;
    beginShift(at, 1);
    beginInsertRows({}, row, row);
    endShift(row, 1);
    if (m_hasOrder)
        m_order.insert(m_order.begin() + row, at);
    endInsertRows();
    return true;
}

bool GridModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || !m_source || row < 0 || count < 1 || row + count > rowCount())
        return false;
    for (int i = row + count - 1; i >= row; --i) {
        const int source = sourceRow(i);
        if (!m_source->whyNotDeletable(source).isEmpty() || !m_source->deleteRow(source))
            return false;
        beginShift(source, -1);
        beginRemoveRows({}, i, i);
        endShift(i, -1);
        endRemoveRows();
    }
    return true;
}

bool GridModel::removeSourceRows(QList<int> rows, Progress *progress)
{
    if (!m_source || rows.isEmpty())
        return false;
    // From the last to the first, so that the numbers of the remaining rows stay valid.
    std::sort(rows.begin(), rows.end(), std::greater<>());
    qsizetype deleted = 0;
    beginResetModel();
    std::vector<qint32> order = std::exchange(m_order, {});
    const bool hadOrder = std::exchange(m_hasOrder, true);
    const auto end = qScopeGuard([&] {
        rows.resize(deleted);
        std::reverse(rows.begin(), rows.end());
        for (const qint32 row : hadOrder ? order : std::vector<qint32>()) {
            const auto place = std::lower_bound(rows.begin(), rows.end(), row);
            if (place == rows.end() || *place != row)
                m_order.push_back(row - qint32(place - rows.begin()));
        }
        m_hasOrder = hadOrder;
        m_rows = totalRows();
        endResetModel();
    });
    if (m_source->deleteRows(rows)) {
        deleted = rows.size();
        return true;
    }
    ProgressLoop loop(progress, rows.size(), u"Deleting ..."_s);
    for (; deleted < rows.size(); ++deleted) {
        loop.tick(deleted);
        if (!m_source->whyNotDeletable(rows[deleted]).isEmpty() || !m_source->deleteRow(rows[deleted]))
            return false;
    }
    return true;
}

/// From here on the source already has its new rows, while the model still reports the old number.
void GridModel::beginShift(int row, int by)
{
    if (!m_hasOrder) {
        m_changedRow = row;
        m_shift = by;
        return;
    }
    for (qint32 &each : m_order) {
        if (by < 0 && each == row)
            each = -1;
        else if (each >= row)
            each += by;
    }
}

void GridModel::endShift(int row, int by)
{
    m_changedRow = std::numeric_limits<int>::max();
    m_shift = 0;
    m_rows = totalRows();
    if (m_hasOrder && by < 0)
        m_order.erase(m_order.begin() + row);
}

/// New number of a row at or behind the inserted or deleted one; -1 for the deleted row.
int GridModel::movedRow(int row) const
{
    return m_shift < 0 && row == m_changedRow ? -1 : row + m_shift;
}

void GridModel::sortBy(const QList<SortKey> &keys, Progress *progress)
{
    setOrder(keys, m_filters, progress);
}

void GridModel::filterBy(const QStringList &typed, Progress *progress)
{
    QStringList filters = typed;
    while (!filters.isEmpty() && filters.last().trimmed().isEmpty())
        filters.removeLast();
    setOrder(m_keys, filters, progress);
}

void GridModel::setOrder(const QList<SortKey> &keys, const QStringList &filters, Progress *progress)
{
    if (!m_source)
        return;
    std::vector<qint32> order;
    const bool hasOrder = !keys.isEmpty() || !filters.isEmpty();
    if (hasOrder) {
        order = filteredRows(filters, progress);
        sortRows(order, keys, progress);
    }
    // A reset instead of a layout change, since the selection model would keep one persistent index for each selected
    // cell.
    beginResetModel();
    m_order = std::move(order);
    m_hasOrder = hasOrder;
    m_rows = totalRows();
    m_keys = keys;
    m_filters = filters;
    endResetModel();
    Q_EMIT orderChanged();
}

std::vector<qint32> GridModel::filteredRows(const QStringList &typed, Progress *progress) const
{
    const int count = totalRows();
    std::vector<qint32> rows;
    std::vector<std::pair<int, GridFilter>> filters;
    for (int i = 0; i < std::min<qsizetype>(typed.size(), m_columns.size()); ++i) {
        if (const GridFilter filter(typed[i]); !filter.isEmpty())
            filters.emplace_back(i, filter);
    }
    if (filters.empty()) {
        rows.resize(size_t(count));
        std::iota(rows.begin(), rows.end(), 0);
        return rows;
    }
    ProgressLoop loop(progress, count, u"Filtering ..."_s);
    for (int row = 0; row < count; ++row) {
        loop.tick(row);
        const bool isShown = std::all_of(filters.begin(), filters.end(), [&](const auto &filter) {
            return filter.second.matches(m_source->value(row, filter.first), m_source->text(row, filter.first));
        });
        if (isShown)
            rows.push_back(row);
    }
    return rows;
}

namespace {

/// Sort keys of one column: numbers if every cell is a number, else texts. Empty cells come first.
class KeyColumn
{
public:
    KeyColumn(const GridSource &source, const std::vector<qint32> &rows, int column, ProgressLoop &loop, qint64 done)
    {
        m_numbers.resize(size_t(source.rowCount()), std::numeric_limits<double>::quiet_NaN());
        for (const qint32 row : rows) {
            loop.tick(++done);
            if (!addNumber(row, source.value(row, column))) {
                addTexts(source, rows, column, loop);
                return;
            }
        }
    }

    int compare(qint32 a, qint32 b) const
    {
        if (!m_texts.empty())
            return m_texts[size_t(a)].compare(m_texts[size_t(b)], Qt::CaseInsensitive);
        const double x = m_numbers[size_t(a)];
        const double y = m_numbers[size_t(b)];
        if (std::isnan(x) || std::isnan(y))
            return int(std::isnan(y)) - int(std::isnan(x));
        return x < y ? -1 : x > y ? 1 : 0;
    }

private:
    bool addNumber(qint32 row, const QVariant &value)
    {
        if (!value.isValid() || value.isNull())
            return true;
        if (value.typeId() == QMetaType::QDateTime) {
            m_numbers[size_t(row)] = double(value.toDateTime().toMSecsSinceEpoch());
            return true;
        }
        if (value.typeId() == QMetaType::QString)
            return value.toString().isEmpty();
        return numberOf(value, m_numbers[size_t(row)]);
    }
    void addTexts(const GridSource &source, const std::vector<qint32> &rows, int column, ProgressLoop &loop)
    {
        m_numbers = {};
        m_texts.resize(size_t(source.rowCount()));
        qint64 done = 0;
        for (const qint32 row : rows) {
            loop.tick(++done);
            const QVariant value = source.value(row, column);
            m_texts[size_t(row)] = value.typeId() == QMetaType::QString ? value.toString() : source.text(row, column);
        }
    }

    std::vector<double> m_numbers; ///< indexed by source row; NaN for an empty cell
    std::vector<QString> m_texts;  ///< indexed by source row; used if not empty
};

} // namespace

void GridModel::sortRows(std::vector<qint32> &rows, const QList<SortKey> &keys, Progress *progress) const
{
    if (keys.isEmpty() || rows.empty())
        return;
    ProgressLoop loop(progress, qint64(rows.size()) * keys.size(), u"Sorting ..."_s);
    std::vector<KeyColumn> columns;
    for (const SortKey &key : keys)
        columns.emplace_back(*m_source, rows, key.column, loop, qint64(rows.size()) * qint64(columns.size()));
    ProgressLoop comparisons(progress, 0, u"Sorting ..."_s);
    std::stable_sort(rows.begin(), rows.end(), [&](qint32 a, qint32 b) {
        comparisons.tick(0);
        for (qsizetype i = 0; i < keys.size(); ++i) {
            if (const int order = columns[size_t(i)].compare(a, b); order != 0)
                return keys[i].order == Qt::AscendingOrder ? order < 0 : order > 0;
        }
        return false;
    });
}

QModelIndex GridModel::find(const QString &text, const QModelIndex &from, bool forward, Progress *progress) const
{
    const qint64 columns = columnCount();
    const qint64 cells = columns * rowCount();
    if (cells == 0 || text.isEmpty())
        return {};
    qint64 at = from.isValid() ? from.row() * columns + from.column() : (forward ? cells - 1 : 0);
    ProgressLoop loop(progress, cells, u"Finding ..."_s);
    for (qint64 done = 1; done <= cells; ++done) {
        loop.tick(done);
        at = (at + (forward ? 1 : cells - 1)) % cells;
        const int row = int(at / columns);
        const int column = int(at % columns);
        const bool isFound = m_source->text(sourceRow(row), column).contains(text, Qt::CaseInsensitive);
        if (isFound || (column == 0 && lineText(row).contains(text, Qt::CaseInsensitive)))
            return index(row, column);
    }
    return {};
}

} // namespace tarnwick

#include "LegendModel.h"

#include <brannock/paint/MapColours.h>
#include <tarnwick/Format.h>

#include <QFont>
#include <QLocale>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace app {

namespace {

const QString kMimeType = u"application/x-arvo-legend-entry"_s;

QString grouped(int number)
{
    return tarnwick::format(u"%D", number);
}

} // namespace

void LegendModel::setDocument(map::MapDocument *document)
{
    beginResetModel();
    m_document = document;
    m_rows = document ? document->count() : 0;
    m_subscription = {};
    if (document)
        m_subscription = document->subscribe([this](const map::MapEvent &event) { mapChanged(event); });
    endResetModel();
}

void LegendModel::mapChanged(const map::MapEvent &event)
{
    if (event.has(map::MapEvent::kLegend))
        refresh();
}

void LegendModel::refresh()
{
    const int rows = m_document ? m_document->count() : 0;
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    if (m_rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, ColumnCount - 1));
}

void LegendModel::showTrial(int place, const std::optional<ellery::TubeMark> &mark)
{
    m_trialPlace = place;
    m_trial = mark;
    Q_EMIT dataChanged(index(place, Symbol), index(place, Symbol));
}

ellery::TubeMark LegendModel::mark(int row) const
{
    return m_trial && row == m_trialPlace ? *m_trial : m_document->entry(row).mark;
}

int LegendModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int LegendModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant LegendModel::text(int row, int column) const
{
    const plans::MapFill &fill = m_document->entry(row);
    switch (column) {
    case Type:
        return fill.typeName();
    case Description:
        return fill.label;
    case Tubes:
        return grouped(fill.fillCount);
    case Hits:
        return grouped(m_document->hits(row));
    default:
        return {};
    }
}

QString LegendModel::explanation(int row) const
{
    const plans::MapFill &fill = m_document->entry(row);
    QString text = u"%1: %2\n%3 tubes, %4 of them shown with symbol %5"_s.arg(
        fill.typeName(), fill.label.trimmed(), grouped(fill.fillCount), grouped(m_document->hits(row)),
        fill.mark.symbol.text());
    if (const QString detail = fill.detail(); !detail.isEmpty())
        text += u'\n' + detail;
    if (!fill.shown)
        text += u"\nHidden"_s;
    if (fill.allSections)
        text += u"\nMarks its rows and columns in every section"_s;
    return text;
}

QVariant LegendModel::data(const QModelIndex &index, int role) const
{
    if (!m_document || !checkIndex(index, CheckIndexOption::IndexIsValid) || index.row() >= m_document->count())
        return {};
    const plans::MapFill &fill = m_document->entry(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text(index.row(), index.column());
    case Qt::CheckStateRole:
        return index.column() == Symbol ? QVariant(fill.shown ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::TextAlignmentRole:
        return int((index.column() >= Tubes ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return index.column() == Symbol || role == Qt::ToolTipRole ? QVariant(explanation(index.row()))
                                                                   : text(index.row(), index.column());
    case Qt::FontRole: {
        QFont font;
        font.setItalic(!fill.shown);
        return font;
    }
    case MarkRole:
        return QVariant::fromValue(mark(index.row()));
    default:
        return {};
    }
}

bool LegendModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    if (index.column() == Symbol && role == Qt::CheckStateRole)
        Q_EMIT showRequested(index.row(), value.toInt() == Qt::Checked);
    else if (index.column() == Description && role == Qt::EditRole)
        Q_EMIT renameRequested(index.row(), value.toString());
    else
        return false;
    return true;
}

QVariant LegendModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((section >= Tubes ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    static const QString titles[] = {QString(), u"TYPE"_s, u"DESCRIPTION"_s, u"TUBES"_s, u"HITS"_s};
    static const QString tips[] = {
        u"Symbol on the map; click it to choose another. The box shows and hides the entry"_s, u"Kind of fill"_s,
        u"What the entry marks"_s, u"Tubes that the entry found"_s,
        u"Tubes that carry the entry's symbol, not hidden by a later entry"_s};
    if (role == Qt::DisplayRole)
        return titles[section];
    if (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole)
        return tips[section];
    return {};
}

Qt::ItemFlags LegendModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled; // between rows, not on them
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    if (index.column() == Symbol)
        flags |= Qt::ItemIsUserCheckable;
    if (index.column() == Description)
        flags |= Qt::ItemIsEditable;
    return flags;
}

QStringList LegendModel::mimeTypes() const
{
    return {kMimeType};
}

QMimeData *LegendModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    data->setData(kMimeType, QByteArray::number(indexes.first().row()));
    return data;
}

bool LegendModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int, const QModelIndex &parent)
{
    if (action != Qt::MoveAction || !data->hasFormat(kMimeType))
        return false;
    bool ok = false;
    const int from = data->data(kMimeType).toInt(&ok);
    const int gap = row >= 0 ? row : (parent.isValid() ? parent.row() : m_rows);
    if (!ok || from < 0 || from >= m_rows)
        return false;
    Q_EMIT moveRequested(from, gap > from ? gap - 1 : gap);
    // The move is done. After "true" the view would also remove the dragged row.
    return false;
}

} // namespace app

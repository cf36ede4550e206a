#include "MacroModel.h"

using namespace Qt::StringLiterals;

namespace query {

MacroModel::MacroModel(const tarnwick::JMacro &macros, QObject *parent)
    : QAbstractTableModel(parent)
    , m_fixed(macros.entries())
{
}

MacroModel::MacroModel(ArvoOptionsEdit &edit, QObject *parent)
    : QAbstractTableModel(parent)
    , m_edit(&edit)
{
}

int MacroModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return m_edit ? m_edit->macroCount() + 1 : int(m_fixed.size());
}

int MacroModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant MacroModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == EntryColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole && isNewRow(index.row()) && index.column() == NameColumn)
        return u"Type a name here to add a macro"_s;
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    if (index.column() == EntryColumn)
        return isNewRow(index.row()) ? u"*"_s : QString::number(index.row() + 1);
    if (isNewRow(index.row()))
        return QString();
    const tarnwick::JMacro::Entry &entry = m_edit ? m_edit->macro(index.row()) : m_fixed[index.row()];
    return index.column() == NameColumn ? entry.name : entry.value;
}

bool MacroModel::setName(int row, const QString &name)
{
    const bool isNew = isNewRow(row);
    if (isNew && name.trimmed().isEmpty())
        return false;
    const QString reason = m_edit->setMacroName(row, name);
    if (!reason.isEmpty()) {
        Q_EMIT refused(reason);
        return false;
    }
    if (isNew) {
        beginInsertRows({}, row + 1, row + 1);
        endInsertRows();
    }
    return true;
}

bool MacroModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!m_edit || role != Qt::EditRole || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    if (index.column() == NameColumn) {
        if (!setName(index.row(), value.toString()))
            return false;
    } else if (index.column() == ValueColumn && !isNewRow(index.row())) {
        m_edit->setMacroValue(index.row(), value.toString());
    } else {
        return false;
    }
    Q_EMIT dataChanged(index.siblingAtColumn(EntryColumn), index.siblingAtColumn(ValueColumn));
    return true;
}

void MacroModel::remove(int row)
{
    if (!m_edit || row < 0 || row >= m_edit->macroCount())
        return;
    beginRemoveRows({}, row, row);
    m_edit->removeMacro(row);
    endRemoveRows();
}

QVariant MacroModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    static const QString titles[] = {u"ENTRY"_s, u"MACRO NAME"_s, u"MACRO VALUE"_s};
    if (role == Qt::DisplayRole)
        return titles[section];
    if (role == Qt::TextAlignmentRole)
        return int((section == EntryColumn ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags MacroModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool isEditable =
        m_edit && (index.column() == NameColumn || (index.column() == ValueColumn && !isNewRow(index.row())));
    return isEditable ? flags | Qt::ItemIsEditable : flags;
}

} // namespace query

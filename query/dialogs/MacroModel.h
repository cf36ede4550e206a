#pragma once
#include <query/ArvoOptionsEdit.h>

#include <QAbstractTableModel>

namespace query {

/// Macros as a table: ENTRY, MACRO NAME, MACRO VALUE. System macros are read-only. User macros can be edited; an empty
/// last row takes a new one.
class MacroModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { EntryColumn, NameColumn, ValueColumn, ColumnCount };

    /// System macros.
    explicit MacroModel(const tarnwick::JMacro &macros, QObject *parent = nullptr);
    /// User macros; edit must outlive the model.
    explicit MacroModel(ArvoOptionsEdit &edit, QObject *parent = nullptr);

    void remove(int row);
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    /// Emitted with the reason if a name was refused.
    void refused(const QString &reason);

private:
    bool isNewRow(int row) const { return m_edit && row == m_edit->macroCount(); }
    bool setName(int row, const QString &name);

    QList<tarnwick::JMacro::Entry> m_fixed;
    ArvoOptionsEdit *m_edit = nullptr;
};

} // namespace query

#pragma once
#include <QAbstractTableModel>

namespace plans {
class MapLegend;
}

namespace app {

/// The entries of the legend as a table. The view shows what the legend holds and asks for changes by signals: whoever
/// owns the legend makes them, with undo, and calls refresh().
class LegendModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Symbol, Type, Description, Tubes, Hits, ColumnCount };
    enum Role {
        SymbolRole = Qt::UserRole, ///< QChar
        ColourRole,                ///< QColor
    };

    explicit LegendModel(QObject *parent = nullptr)
        : QAbstractTableModel(parent)
    {
    }
    /// Not owned; null for none.
    void setLegend(const plans::MapLegend *legend);
    /// The legend has changed. The current row of views stays where it is.
    void refresh();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // Dragging an entry to another place.
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    void showRequested(int entry, bool shown);
    /// to: where the entry is to stand afterwards.
    void moveRequested(int from, int to);
    void renameRequested(int entry, const QString &label);

private:
    QVariant text(int row, int column) const;
    QString explanation(int row) const;

    const plans::MapLegend *m_legend = nullptr;
    int m_rows = 0; ///< as views know it
};

} // namespace app

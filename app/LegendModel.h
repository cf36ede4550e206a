#pragma once
#include <QAbstractTableModel>

#include <map/MapDocument.h>

namespace app {

/// Table model of the entries of a map. Follows the document, and requests changes by signals.
class LegendModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Symbol, Type, Description, Tubes, Hits, ColumnCount };
    enum Role {
        MarkRole = Qt::UserRole, ///< ellery::TubeMark
    };

    explicit LegendModel(QObject *parent = nullptr)
        : QAbstractTableModel(parent)
    {
    }
    /// Must outlive its use here; null for none.
    void setDocument(map::MapDocument *document);
    /// Shows another mark for an entry as a preview; nullopt: its own mark.
    void showTrial(int place, const std::optional<ellery::TubeMark> &mark);

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
    /// to: place of the entry after the move.
    void moveRequested(int from, int to);
    void renameRequested(int entry, const QString &label);

private:
    void mapChanged(const map::MapEvent &event);
    /// Keeps the current row of views.
    void refresh();
    QVariant text(int row, int column) const;
    QString explanation(int row) const;
    ellery::TubeMark mark(int row) const;

    const map::MapDocument *m_document = nullptr;
    int m_rows = 0; ///< number of rows known to views
    int m_trialPlace = -1;
    std::optional<ellery::TubeMark> m_trial;
    map::Subscription m_subscription;
};

} // namespace app

#pragma once
#include <QTableView>

namespace app {

class LegendModel;

/// The legend table: symbol and check box, type, description and counts. Entries are moved by dragging; Space shows and
/// hides the current entry; a click on the symbol requests another.
class LegendView : public QTableView
{
    Q_OBJECT
public:
    explicit LegendView(LegendModel *model, QWidget *parent = nullptr);
    /// -1 if there is none.
    int currentEntry() const;
    void setCurrentEntry(int entry);
    /// Starts editing the description of the current entry.
    void renameCurrent();
    /// Ends editing and keeps the typed description.
    void endRename();

Q_SIGNALS:
    void contextMenuRequested(const QPoint &globalPos, int entry);
    /// Emitted after a double click or Return on an entry.
    void entryActivated(int entry);
    /// Emitted after a click on the symbol of an entry.
    void symbolRequested(int entry);

protected Q_SLOTS:
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last) override;

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fitRows();
    void fitColumns();
    /// Entry whose symbol is at a position of the viewport; -1 for none.
    int symbolAt(const QPoint &place) const;
    void dropRename();
    /// The editor of a description, nullptr: none is open.
    QWidget *openEditor() const;

    int m_pressedSymbol = -1;
};

} // namespace app

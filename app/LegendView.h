#pragma once
#include <QTableView>

namespace app {

class LegendModel;

/// The legend table: a swatch with the symbol and a check box, then type, description and counts. Entries are dragged
/// to another place; Space shows and hides the current one; a click on its symbol asks for another.
class LegendView : public QTableView
{
    Q_OBJECT
public:
    explicit LegendView(LegendModel *model, QWidget *parent = nullptr);
    /// -1 when there is none.
    int currentEntry() const;
    void setCurrentEntry(int entry);
    /// Lets the user type another description for the current entry.
    void renameCurrent();
    /// Takes over a description that is being typed.
    void endRename();

Q_SIGNALS:
    void contextMenuRequested(const QPoint &globalPos, int entry);
    /// Double click or Return on an entry.
    void entryActivated(int entry);
    /// A click on the symbol of an entry.
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
    /// The entry whose symbol is at a place of the viewport, -1: none.
    int symbolAt(const QPoint &place) const;
    void dropRename();
    /// The editor of a description, nullptr: none is open.
    QWidget *openEditor() const;

    int m_pressedSymbol = -1;
};

} // namespace app

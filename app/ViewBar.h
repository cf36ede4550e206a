#pragma once
#include <QToolBar>

#include <functional>

class QLineEdit;
class QStringListModel;
class QToolButton;

namespace tarnwick {
class CommandActions;
}

namespace app {

/// Undo and the view of the map: buttons with pictures. The field to find a tube by its address belongs to it, but
/// stands where its owner puts it: in a narrow window a bar hides what is at its end.
class ViewBar : public QToolBar
{
    Q_OBJECT
public:
    explicit ViewBar(tarnwick::CommandActions &actions, QWidget *parent = nullptr);
    /// Opens the list of changes.
    void showChanges();
    /// Puts the cursor into the field to find a tube by its address.
    void focusFind();
    QWidget *findField() const;
    /// How a typed address may go on; asked for with every letter.
    void setCompletions(std::function<QStringList(const QString &)> completions)
    {
        m_completions = std::move(completions);
    }
    /// Says at the field why nothing was found; the next letter takes it away again.
    void showFindProblem(const QString &text);
    /// The changes that the menu beside Undo lists, newest last; those from position on are undone. saved: the position
    /// that the map's file holds, -1 for none.
    void setChanges(const QStringList &labels, int position, int saved);

Q_SIGNALS:
    /// The menu beside Undo is about to open: time for setChanges().
    void changesWanted();
    void findRequested(const QString &address);
    /// Esc in the field: back to the map.
    void findLeft();
    /// As many changes are to stand.
    void changesRequested(int position);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addUndo(tarnwick::CommandActions &actions);
    /// The button serves both Undo and the list of changes, in which undone ones stand, too.
    void refreshUndo(const QAction &undo, const QAction &redo);
    void setPictures(tarnwick::CommandActions &actions);
    void addDragModes(tarnwick::CommandActions &actions);
    void showDragMode(const QAction &mode);
    void makeFind();
    /// Return, or a choice from the list.
    void enter();
    void complete(const QString &text);
    void hideFindProblem();

    QMenu *m_changes = nullptr;
    QToolButton *m_undo = nullptr;
    QToolButton *m_drag = nullptr;
    QLineEdit *m_find = nullptr;
    QStringListModel *m_found = nullptr;
    std::function<QStringList(const QString &)> m_completions;
};

} // namespace app

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

/// Tool bar with undo and the view of the map. The field for finding a tube belongs to it, but is placed by the owner:
/// in a narrow window a tool bar hides its last widgets.
class ViewBar : public QToolBar
{
    Q_OBJECT
public:
    explicit ViewBar(tarnwick::CommandActions &actions, QWidget *parent = nullptr);
    /// Opens the list of changes.
    void showChanges();
    /// Sets the focus to the field for finding a tube.
    void focusFind();
    QWidget *findField() const;
    /// Completions of a typed address; called for each letter.
    void setCompletions(std::function<QStringList(const QString &)> completions)
    {
        m_completions = std::move(completions);
    }
    /// Shows at the field why nothing was found, until the text changes.
    void showFindProblem(const QString &text);
    /// Sets the changes for the menu of Undo, oldest first; those from position on are undone. saved: position of the
    /// saved state, -1 for none.
    void setChanges(const QStringList &labels, int position, int saved);

Q_SIGNALS:
    /// Emitted before the menu of Undo opens, to call setChanges().
    void changesWanted();
    void findRequested(const QString &address);
    /// Emitted after Esc in the field.
    void findLeft();
    /// Emitted to undo or redo until this number of changes is in effect.
    void changesRequested(int position);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addUndo(tarnwick::CommandActions &actions);
    /// The button is enabled if there are changes to undo or to redo.
    void refreshUndo(const QAction &undo, const QAction &redo);
    void setPictures(tarnwick::CommandActions &actions);
    void addDragModes(tarnwick::CommandActions &actions);
    void showDragMode(const QAction &mode);
    void makeFind();
    /// Emitted after Return or a choice from the list.
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

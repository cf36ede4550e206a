#pragma once
#include "CommandActions.h"

#include <QToolBar>

class QLineEdit;
class QToolButton;

namespace app {

/// Undo and the view of the map: buttons with pictures, and a field to find a tube by its address.
class ViewBar : public QToolBar
{
    Q_OBJECT
public:
    explicit ViewBar(CommandActions &actions, QWidget *parent = nullptr);
    /// Puts the cursor into the field.
    void focusFind();
    /// Opens the list of changes beside Undo.
    void showChanges();
    /// The changes that the menu beside Undo lists, newest last; those from position on are undone.
    void setChanges(const QStringList &labels, int position);

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
    void addUndo(CommandActions &actions);
    void addView(CommandActions &actions);
    void addFind();

    QMenu *m_changes = nullptr;
    QToolButton *m_undo = nullptr;
    QLineEdit *m_find = nullptr;
};

} // namespace app

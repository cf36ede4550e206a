#pragma once
#include <QObject>
#include <tarnwick/SessionFile.h>

class QHeaderView;
class QWidget;

namespace tarnwick {

/// Saves and restores the state of a window or dialog between sessions: position, size, splitters and column widths of
/// tables. Objects are identified by object name; splitters and tables without a name are ignored. The state is stored
/// in the user's session file, never in a project.
class StateKeeper : public QObject
{
public:
    /// Creates a keeper owned by the window. Call it after the window's children were created and before it is shown.
    /// Position, size and splitters are restored at once; column widths as soon as a table has the stored number of
    /// columns. When shown, the window is moved onto the screen with its whole frame. The state is stored whenever the
    /// window is hidden or destroyed.
    static void keep(QWidget *window);

    /// "session.json" below the user's configuration folder of the program.
    static SessionFile sessionFile();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit StateKeeper(QWidget *window);
    void restore();
    void restoreColumns(QHeaderView *header, const QString &name);
    void restoreColumns(class JTableWin &table);
    void store() const;
    QString keyOf(const QString &name) const;

    QWidget *m_window;
    QJsonObject m_kept; ///< as it was when the window was made
};

} // namespace tarnwick

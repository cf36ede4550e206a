#pragma once
#include <QObject>
#include <tarnwick/SessionFile.h>

class QHeaderView;
class QWidget;

namespace tarnwick {

/// Remembers between sessions how a window or dialog stood: its place and size, its splitters and the column widths of
/// its tables. Everything is found by object name, so the window, and each splitter and table to be kept, must have
/// one; what has none is left alone. The state is kept in the user's session file, never in a project.
class StateKeeper : public QObject
{
public:
    /// Makes a keeper that belongs to the window. Call it when the window's children have been made, before it is
    /// shown: the place, size and splitters are restored now, column widths as soon as a table has as many columns as
    /// were kept. Once shown, the window is brought onto the screen with its whole frame. All is stored whenever the
    /// window is hidden or destroyed.
    static void keep(QWidget *window);

    /// "session.json" below the user's configuration folder of the program.
    static SessionFile sessionFile();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit StateKeeper(QWidget *window);
    void restore();
    void restoreColumns(QHeaderView *header, const QString &name);
    void store() const;
    QString keyOf(const QString &name) const;

    QWidget *m_window;
    QJsonObject m_kept; ///< as it was when the window was made
};

} // namespace tarnwick

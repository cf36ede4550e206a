#pragma once
#include <QString>

class QLabel;
class QStatusBar;

namespace app {

class ProjectSession;
class StatusLine;

/// Parts of the status bar of the window.
class StatusBar
{
public:
    /// Adds the parts to the bar, which owns them.
    explicit StatusBar(QStatusBar *bar);

    /// Line for messages.
    StatusLine &line() { return *m_line; }
    void showTube(const QString &text);
    /// Shows whether the map has unsaved changes, and the number of selected tubes.
    void showMap(const ProjectSession &session);
    /// Shows a warning if no recovery copy can be kept.
    void showProtection(const ProjectSession &session);

private:
    StatusLine *m_line;
    QLabel *m_tube;
    QLabel *m_protection;
    QLabel *m_map;
    QLabel *m_selection;
};

} // namespace app

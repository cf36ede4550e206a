#pragma once
#include <QString>

class QLabel;
class QStatusBar;

namespace app {

class ProjectSession;
class StatusLine;

/// The parts of the window's status bar.
class StatusBar
{
public:
    /// Adds the parts to the bar, which owns them.
    explicit StatusBar(QStatusBar *bar);

    /// For messages.
    StatusLine &line() { return *m_line; }
    void showTube(const QString &text);
    /// Whether the map has unsaved changes, and how many tubes are selected.
    void showMap(const ProjectSession &session);
    /// Tells when a crash would cost the unsaved changes.
    void showProtection(const ProjectSession &session);

private:
    StatusLine *m_line;
    QLabel *m_tube;
    QLabel *m_protection;
    QLabel *m_map;
    QLabel *m_selection;
};

} // namespace app

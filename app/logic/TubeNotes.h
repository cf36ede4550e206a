#pragma once
#include "ProjectSession.h"

#include <brannock/TubeHistory.h>
#include <results/history/ArvoHistoryOptions.h>

namespace app {

/// What the tip of the map tells about a tube beyond its marks: its repairs, and its last indications in the history
/// file.
class TubeNotes
{
public:
    /// The session must live as long as this object.
    explicit TubeNotes(ProjectSession &session)
        : m_session(session)
    {
    }
    /// Reads the history file of the project if it was changed. Call after commands, not while the pointer moves: a
    /// large file takes seconds.
    void refresh();
    /// Repairs of a tube as lines, and all its results in the history file.
    QStringList repairs(int tube) const;
    QList<brannock::TubeIndication> indications(int tube) const;
    /// tube: index in the component
    QStringList lines(int tube) const;

private:
    ProjectSession &m_session;
    results::ArvoHistoryOptions m_options;
    brannock::TubeHistory m_history;
    QString m_failure; ///< why the file could not be read
};

} // namespace app

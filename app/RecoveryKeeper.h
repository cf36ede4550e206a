#pragma once
#include <QTimer>

namespace app {

class CommandRunner;
class ProjectSession;

/// Brings the copy for the case of a crash up to date a moment after the last change.
class RecoveryKeeper : public QObject
{
    Q_OBJECT
public:
    /// Both must live as long as this object.
    RecoveryKeeper(ProjectSession &session, CommandRunner &runner, QObject *parent);

    /// Work that is in no file has changed.
    void noteChange();
    /// The work has come to its proper end: the copy is removed.
    void end();

Q_SIGNALS:
    /// The copy is up to date, or could not be written.
    void kept();

private:
    ProjectSession &m_session;
    QTimer m_delay;
};

} // namespace app

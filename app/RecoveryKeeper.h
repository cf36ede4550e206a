#pragma once
#include <QTimer>

namespace app {

class CommandRunner;
class ProjectSession;

/// Updates the recovery copy shortly after the last change.
class RecoveryKeeper : public QObject
{
    Q_OBJECT
public:
    /// Both must outlive this object.
    RecoveryKeeper(ProjectSession &session, CommandRunner &runner, QObject *parent);

    /// Call after a change of unsaved work.
    void noteChange();
    /// Call at the regular end of the work: deletes the copy.
    void end();

Q_SIGNALS:
    /// Emitted after the copy was updated or could not be written.
    void kept();

private:
    ProjectSession &m_session;
    QTimer m_delay;
};

} // namespace app

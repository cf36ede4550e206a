#include "RecoveryKeeper.h"

#include "CommandRunner.h"

#include <app/logic/ProjectSession.h>

namespace app {

/// Delay in milliseconds, so that several changes in a row are written once.
static constexpr int kDelay = 300;

RecoveryKeeper::RecoveryKeeper(ProjectSession &session, CommandRunner &runner, QObject *parent)
    : QObject(parent)
    , m_session(session)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(kDelay);
    connect(&m_delay, &QTimer::timeout, this, [this, &runner] {
        runner.guard([this] { m_session.updateRecoveryCopy(); });
        Q_EMIT kept();
    });
}

void RecoveryKeeper::noteChange()
{
    if (!m_delay.isActive())
        m_delay.start();
}

void RecoveryKeeper::end()
{
    m_delay.stop();
    m_session.endRecovery();
}

} // namespace app

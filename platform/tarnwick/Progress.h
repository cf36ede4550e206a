#pragma once
#include <QElapsedTimer>
#include <QString>

namespace tarnwick {

/// Long work reports its progress here and checks whether it should stop. Logic uses this interface instead of a
/// window.
class Progress
{
public:
    virtual ~Progress() = default;
    /// total 0: unknown.
    virtual void report(qint64 done, qint64 total, const QString &what) = 0;
    virtual bool cancelled() = 0;
};

/// Progress of a loop: cheap ticks, at most ten reports per second. tick() throws Cancelled if the work should stop.
class ProgressLoop
{
public:
    /// progress may be null
    ProgressLoop(Progress *progress, qint64 total, const QString &what);
    void tick(qint64 done)
    {
        if (m_progress && ++m_calls >= m_callsBetweenLooks)
            look(done);
    }

private:
    void look(qint64 done);

    Progress *m_progress;
    qint64 m_total;
    QString m_what;
    QElapsedTimer m_sinceReport;
    QElapsedTimer m_sinceLook;
    int m_calls = 0;
    int m_callsBetweenLooks = 1;
};

} // namespace tarnwick

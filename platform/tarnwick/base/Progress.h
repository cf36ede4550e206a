#pragma once
#include <QElapsedTimer>
#include <QString>

namespace tarnwick {

/// Long work reports its progress here and checks whether it should stop. Logic uses this interface instead of a
/// window. An implementation may throw: the work then stops as if it was cancelled, and that exception is thrown
/// instead of Cancelled.
class Progress
{
public:
    virtual ~Progress() = default;
    /// True stops the work: it is undone, and Cancelled is thrown. The database engine asks about ten times a second
    /// while a statement runs.
    virtual bool cancelled() = 0;
    /// total 0: unknown. Does nothing by default.
    virtual void report(qint64 done, qint64 total, const QString &what);
    /// The database engine waits for another program that has the file locked. Called about ten times a second until
    /// the file is free or cancelled() returns true; without a progress object nothing waits longer than a second.
    /// Reports the wait by default.
    virtual void waiting();
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

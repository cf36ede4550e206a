#include "Progress.h"

#include "Error.h"

namespace tarnwick {

void Progress::report(qint64, qint64, const QString &)
{
}

void Progress::waiting()
{
    report(0, 0, QStringLiteral("Waiting for another program that uses the database ..."));
}

ProgressLoop::ProgressLoop(Progress *progress, qint64 total, const QString &what)
    : m_progress(progress)
    , m_total(total)
    , m_what(what)
{
    if (!m_progress)
        return;
    m_progress->report(0, m_total, m_what);
    m_sinceReport.start();
    m_sinceLook.start();
}

void ProgressLoop::look(qint64 done)
{
    constexpr qint64 kReportInterval = 100; // ms
    constexpr qint64 kCheckInterval = 10;   // ms
    constexpr int kMostCalls = 4096;

    // Loops differ in speed by a factor of a million: determine how many calls take about a hundredth of a second.
    if (m_sinceLook.restart() < kCheckInterval)
        m_callsBetweenLooks = qMin(m_callsBetweenLooks * 2, kMostCalls);
    else
        m_callsBetweenLooks = qMax(m_callsBetweenLooks / 2, 1);
    m_calls = 0;

    if (m_progress->cancelled())
        throw Cancelled();
    if (m_sinceReport.elapsed() >= kReportInterval) {
        m_progress->report(done, m_total, m_what);
        m_sinceReport.restart();
    }
}

} // namespace tarnwick

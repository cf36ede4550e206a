#include "FindingRows.h"

#include <tarnwick/base/Error.h>

namespace dao {

FindingRows::FindingRows(tarnwick::Progress *progress, const FoundListener &listener, std::function<void()> before)
    : m_progress(progress)
    , m_listener(listener)
    , m_before(std::move(before))
    , m_loop(progress || listener ? this : nullptr, 0, QStringLiteral("Finding rows"))
{
    m_sinceAsked.start();
}

void FindingRows::tell()
{
    if (!m_listener)
        return;
    if (m_before)
        m_before();
    m_listener();
    // The listener may have shown windows in which the user stops the work.
    if (m_progress && m_progress->cancelled())
        throw tarnwick::Cancelled();
}

bool FindingRows::cancelled()
{
    constexpr qint64 kAskEvery = 100; // ms
    if (!m_progress || !m_sinceAsked.hasExpired(kAskEvery))
        return false;
    m_sinceAsked.start();
    return m_progress->cancelled();
}

void FindingRows::report(qint64 done, qint64 total, const QString &what)
{
    if (m_progress)
        m_progress->report(done, total, what);
    if (done > 0)
        tell();
}

} // namespace dao

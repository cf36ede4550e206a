#pragma once
#include <functional>
#include <QElapsedTimer>
#include <tarnwick/base/Progress.h>

namespace dao {

/// Called while the rows of a dynaset are still being found: first when there is a page of them, then about ten times a
/// second. The statement stands between two rows, so the rows found so far can be read; nothing else may be done with
/// the recordset, and nothing may be written. What it throws ends the opening.
using FoundListener = std::function<void()>;

/// Calls progress and listener from a loop that finds rows.
class FindingRows : private tarnwick::Progress
{
public:
    /// Rows of the first page: more than a large screen shows.
    static constexpr qint64 kPage = 256;

    /// Both may be null. before: called before each call of the listener.
    FindingRows(tarnwick::Progress *progress, const FoundListener &listener, std::function<void()> before = {});
    FindingRows(const FindingRows &) = delete;
    FindingRows &operator=(const FindingRows &) = delete;

    /// Call after each row. Throws tarnwick::Cancelled if the progress stops the work.
    void found(qint64 rows)
    {
        if (rows == kPage)
            tell();
        m_loop.tick(rows);
    }

private:
    void tell();
    bool cancelled() override;
    void report(qint64 done, qint64 total, const QString &what) override;

    tarnwick::Progress *m_progress;
    const FoundListener &m_listener;
    std::function<void()> m_before;
    QElapsedTimer m_sinceAsked;
    tarnwick::ProgressLoop m_loop;
};

} // namespace dao

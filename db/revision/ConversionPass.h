#pragma once
#include "ConversionRequest.h"

#include <dao/ProgressScope.h>
#include <db/Errors.h>
#include <db/FileFailure.h>
#include <db/SessionTransaction.h>
#include <tarnwick/base/Progress.h>

namespace db {

/// One pass of a conversion over the session's database; holds what its steps share. All changes are in one
/// transaction, which begins with the first change. So a file is either unchanged or fully converted, and a file that
/// needs no change is neither written to nor locked.
class ConversionPass
{
public:
    /// Thrown after reporting an error that makes further steps impossible: disk full, file locked, transaction lost.
    class Aborted : public std::exception
    {
    };

    /// Thrown by request() and beginChanges() if another program has changed the file since the pass began: the pass
    /// must start again. The file is locked from then on, so this happens at most once.
    class ChangedMeanwhile : public std::exception
    {
    };

    /// The engine's statements consult progress too while the pass lives. progress may be null.
    ConversionPass(DatabaseSession &session, ConversionRequest &request, tarnwick::Progress *progress);
    ConversionPass(const ConversionPass &) = delete;
    ConversionPass &operator=(const ConversionPass &) = delete;

    DatabaseSession &session() const { return *m_session; }
    dao::Database &database() const { return m_session->database(); }
    tarnwick::UserPrompts &prompts() const { return m_session->prompts(); }

    /// Returns true if a step may change the file. Before the first change it does the following, in this order: locks
    /// the file against other programs, checks whether it has changed, and makes the backup. So the backup is exactly
    /// the file that is converted.
    template <typename... Args>
    bool request(const tarnwick::Message &description, const Args &...args)
    {
        return requestStep(tarnwick::format(QStringView(description.text), args...));
    }

    /// Runs a step. An engine exception is reported under the failure's number, the steps requested in it count as
    /// failed, and the pass continues with the next step.
    template <typename Step, typename... Args>
    void guarded(Step step, const tarnwick::Message &failure, const Args &...args)
    {
        const qsizetype requested = m_session->conversion.requested.size();
        const StepOutcome outcome = attemptStep(prompts(), step, failure, args...);
        if (outcome == StepOutcome::Done)
            return;
        m_session->conversion.failed += m_session->conversion.requested.mid(requested);
        if (outcome == StepOutcome::FileFailed)
            throw Aborted();
    }

    /// Applies all changes of a step or none.
    template <typename Changes>
    void change(Changes changes)
    {
        beginChanges();
        dao::Transaction transaction(m_session->workspace());
        changes();
        transaction.commit();
    }

    /// Begins the transaction of all changes if it has not begun. Waits for other programs that write, and prevents
    /// them from writing afterwards. Throws ChangedMeanwhile, and Aborted if the lock was not released.
    void beginChanges();
    bool isChanging() const { return m_transaction.isOpen(); }
    /// Shows the current step as "step of steps".
    void enterStep(int step, int steps);
    /// Commits the changes of all steps. Returns false after reporting the error; the changes are then rolled back.
    bool commit();
    void rollback();

    /// Marks a requested step as not done, after reporting the error.
    template <typename... Args>
    void markFailed(const tarnwick::Message &description, const Args &...args)
    {
        m_session->conversion.failed += tarnwick::format(QStringView(description.text), args...);
    }

    /// Call after ChangedMeanwhile: clears the list of steps; the user's answer is kept.
    void startAgain();

private:
    void reportStep();
    bool requestStep(const QString &description);
    void requireUndamaged();

    DatabaseSession *m_session;
    ConversionRequest *m_request;
    tarnwick::Progress *m_progress;
    dao::ProgressScope m_cancellable;
    qint64 m_stamp = 0; ///< identifies the file's state when the pass began
    SessionTransaction m_transaction;
    int m_step = 0;
    int m_steps = 0;
};

} // namespace db

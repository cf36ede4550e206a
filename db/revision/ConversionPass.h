#pragma once
#include "ConversionRequest.h"

#include <db/Errors.h>
#include <db/FileFailure.h>
#include <db/SessionTransaction.h>
#include <tarnwick/Progress.h>

namespace db {

/// One pass of a conversion over the session's database: what its steps share. The changes of all steps are in one
/// transaction, which is begun with the first of them, so that a file is either as it was or wholly converted, and one
/// that needs no change is neither written to nor locked.
class ConversionPass : private dao::Progress
{
public:
    /// Thrown when nothing more can be done: the disk is full, the file is locked, the transaction is lost. What went
    /// wrong has been said.
    class Aborted : public std::exception
    {
    };

    /// Thrown by request() and beginChanges() when another program has changed the file since the pass began to look at
    /// it: what needs to be done is to be found out again. The file is locked against others from then on, so it
    /// happens once.
    class ChangedMeanwhile : public std::exception
    {
    };

    /// Runs as the engine's progress while it lives. progress may be null.
    ConversionPass(DatabaseSession &session, ConversionRequest &request, tarnwick::Progress *progress);
    ~ConversionPass() override;
    ConversionPass(const ConversionPass &) = delete;
    ConversionPass &operator=(const ConversionPass &) = delete;

    DatabaseSession &session() const { return *m_session; }
    dao::Database &database() const { return m_session->database(); }
    tarnwick::UserPrompts &prompts() const { return m_session->prompts(); }

    /// Whether a step may change the file. With the first that may, the file is locked against changes by others,
    /// looked at again, and backed up, in this order: the backup is what is converted.
    template <typename... Args>
    bool request(const tarnwick::Message &description, const Args &...args)
    {
        return requestStep(tarnwick::format(QStringView(description.text), args...));
    }

    /// Runs a step; an engine exception is reported under the failure's number, and the pass goes on with the next. The
    /// steps that were requested in it have failed then.
    template <typename Step, typename... Args>
    void guarded(Step step, const tarnwick::Message &failure, const Args &...args)
    {
        const qsizetype requested = m_session->conversion.requested.size();
        try {
            step();
        } catch (const dao::DaoException &exception) {
            m_session->conversion.failed += m_session->conversion.requested.mid(requested);
            showDaoError(prompts(), exception, failure, args...);
            if (isOfWholeFile(exception))
                throw Aborted();
        }
    }

    /// Carries out the changes of a step, all or none.
    template <typename Changes>
    void change(Changes changes)
    {
        beginChanges();
        dao::Transaction transaction(m_session->workspace());
        changes();
        transaction.commit();
    }

    /// Begins the transaction of all changes, unless it is begun. Waits for other programs that write, and keeps them
    /// from writing from then on. Throws ChangedMeanwhile, and Aborted when waiting was in vain.
    void beginChanges();
    bool isChanging() const { return m_transaction.isOpen(); }
    /// The step that the user sees as going on: its number, of how many.
    void enterStep(int step, int steps);
    /// Makes the changes of all steps final. False when that failed, which has been said; they are undone then.
    bool commit();
    void rollback();

    /// A requested step was not done, which has been said.
    template <typename... Args>
    void markFailed(const tarnwick::Message &description, const Args &...args)
    {
        m_session->conversion.failed += tarnwick::format(QStringView(description.text), args...);
    }

    /// After ChangedMeanwhile: forgets the steps, but not that the user was asked.
    void startAgain();

private:
    bool cancelled() override;
    void waiting() override;
    bool requestStep(const QString &description);
    void requireUndamaged();

    DatabaseSession *m_session;
    ConversionRequest *m_request;
    tarnwick::Progress *m_progress;
    qint64 m_stamp = 0; ///< of the file when the pass began to look at it
    SessionTransaction m_transaction;
    bool m_saysWaiting = false;
    int m_step = 0;
    int m_steps = 0;
};

} // namespace db

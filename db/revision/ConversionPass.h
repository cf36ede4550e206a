#pragma once
#include "ConversionRequest.h"

#include <db/Errors.h>
#include <db/FileFailure.h>
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

    /// Runs as the engine's progress while it lives. progress may be null.
    ConversionPass(DatabaseSession &session, ConversionRequest &request, tarnwick::Progress *progress);
    ~ConversionPass() override;
    ConversionPass(const ConversionPass &) = delete;
    ConversionPass &operator=(const ConversionPass &) = delete;

    DatabaseSession &session() const { return *m_session; }
    dao::Database &database() const { return m_session->database(); }
    tarnwick::UserPrompts &prompts() const { return m_session->prompts(); }

    template <typename... Args>
    bool request(const tarnwick::Message &description, const Args &...args)
    {
        return (*m_request)(description, args...);
    }

    /// Runs a step; an engine exception is reported under the failure's number, and the pass goes on with the next.
    template <typename Step, typename... Args>
    void guarded(Step step, const tarnwick::Message &failure, const Args &...args)
    {
        try {
            step();
        } catch (const dao::DaoException &exception) {
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

    /// Begins the transaction of all changes, unless it is begun. Without a change it neither writes nor locks others
    /// out.
    void beginChanges();
    /// The step that the user sees as going on: its number, of how many.
    void enterStep(int step, int steps);
    /// Makes the changes of all steps final. False when that failed, which has been said; they are undone then.
    bool commit();
    void rollback();

private:
    bool cancelled() override;

    DatabaseSession *m_session;
    ConversionRequest *m_request;
    tarnwick::Progress *m_progress;
    bool m_changing = false;
    int m_step = 0;
    int m_steps = 0;
};

} // namespace db

#pragma once
#include "DatabaseSession.h"

namespace db {

/// A transaction on the session's workspace, for work that will write. One that is neither committed nor rolled back is
/// rolled back with this object; the session's close() ends it, too.
class SessionTransaction
{
public:
    explicit SessionTransaction(DatabaseSession &session)
        : m_session(&session)
    {
    }
    ~SessionTransaction();
    SessionTransaction(const SessionTransaction &) = delete;
    SessionTransaction &operator=(const SessionTransaction &) = delete;

    /// Begins as Begin::Writing: waits for other writers (see beginTrans()). An engine exception is reported (1054) and
    /// gives false, or, with rethrow, passes on unreported.
    bool begin(bool rethrow = false);
    bool isOpen() const;
    /// False after a failure, which is reported (1055); the transaction is rolled back then. tarnwick::Cancelled passes
    /// on, and the transaction goes on.
    bool commit();
    /// A failure is reported (1056). Does nothing when none is open.
    void rollback();

private:
    DatabaseSession *m_session;
    int m_depth = 0; ///< of the workspace's transactions, with this one; 0: not begun, or ended
};

} // namespace db

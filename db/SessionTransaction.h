#pragma once
#include "DatabaseSession.h"

namespace db {

/// A transaction on the session's workspace, for work that writes. If it is neither committed nor rolled back, the
/// destructor rolls it back; so does the session's close().
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
    /// false is returned; with rethrow it is passed on unreported.
    bool begin(bool rethrow = false);
    bool isOpen() const;
    /// If the commit fails, reports it (1055), rolls back and returns false. tarnwick::Cancelled is passed on, and the
    /// transaction stays open.
    bool commit();
    /// A failure is reported (1056). Does nothing if no transaction is open.
    void rollback();

private:
    DatabaseSession *m_session;
    int m_depth = 0; ///< depth of the workspace's transactions including this one; 0: not begun, or ended
};

} // namespace db

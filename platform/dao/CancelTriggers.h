#pragma once
#include <dao/store/Connection.h>

namespace dao {

/// Lets a user stop a statement that changes many rows within the program's transaction. The inner engine's own way of
/// interrupting would roll back the whole transaction; a trigger that fails undoes the statement alone. Temporary, and
/// only as long as this object lives.
class CancelTriggers
{
public:
    /// No table: does nothing.
    CancelTriggers(store::Connection &connection, const QString &table);
    ~CancelTriggers();
    CancelTriggers(const CancelTriggers &) = delete;
    CancelTriggers &operator=(const CancelTriggers &) = delete;

private:
    void drop();

    store::Connection &m_connection;
    bool m_installed;
};

} // namespace dao

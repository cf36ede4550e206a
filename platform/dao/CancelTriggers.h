#pragma once
#include <dao/store/Connection.h>

namespace dao {

/// Lets a user stop a statement that changes many rows within the program's transaction. The inner engine's own way of
/// interrupting would roll back the whole transaction; a trigger that fails undoes the statement alone. Temporary, and
/// only as long as this object lives.
class CancelTriggers
{
public:
    /// No tables: does nothing.
    CancelTriggers(store::Connection &connection, const QStringList &tables);
    ~CancelTriggers();
    CancelTriggers(const CancelTriggers &) = delete;
    CancelTriggers &operator=(const CancelTriggers &) = delete;

private:
    store::Connection &m_connection;
    QStringList m_names;
};

} // namespace dao

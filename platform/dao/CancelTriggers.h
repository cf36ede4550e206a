#pragma once
#include <dao/store/Connection.h>

namespace dao {

/// Lets a user stop a statement that changes many rows inside the program's transaction. sqlite3_interrupt() would roll
/// back the whole transaction; a trigger that raises an error undoes only the statement. The triggers are temporary and
/// exist as long as this object.
class CancelTriggers
{
public:
    /// An empty list installs no triggers.
    CancelTriggers(store::Connection &connection, const QStringList &tables);
    ~CancelTriggers();
    CancelTriggers(const CancelTriggers &) = delete;
    CancelTriggers &operator=(const CancelTriggers &) = delete;

private:
    store::Connection &m_connection;
    QStringList m_names;
};

} // namespace dao

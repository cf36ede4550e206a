#pragma once
#include "Modes.h"

#include <vector>

namespace dao {

/// An open database as its workspace sees it. Level 0 is a transaction of the file; the levels above are savepoints in
/// it.
class TransactionMember
{
public:
    virtual ~TransactionMember() = default;
    virtual void beginLevel(int level, BeginMode mode) = 0;
    virtual void commitLevel(int level) = 0;
    virtual void rollbackLevel(int level) = 0;
};

/// Implementation of Workspace: the transactions of all its databases.
class WorkspaceImpl
{
public:
    void begin(BeginMode mode);
    void commit();
    void rollback();
    int depth() const { return m_depth; }

    /// Adds a database and begins the open transactions in it.
    void join(TransactionMember &member);
    void leave(TransactionMember &member) { std::erase(m_members, &member); }

private:
    std::vector<TransactionMember *> m_members;
    int m_depth = 0;
};

} // namespace dao

#pragma once
#include "Modes.h"

#include <memory>

namespace dao {

class WorkspaceImpl;

/// A workspace: transactions that span all of its open databases, nested up to five levels. Rolling back an outer
/// transaction also undoes inner ones that were committed. The destructor rolls back what is still open.
class Workspace
{
public:
    Workspace();
    ~Workspace();
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;

    using Begin = BeginMode;
    /// Errors: 3003 nested too deep; 3034 commit or rollback without begin; 3260 locked by another program; 3024 at the
    /// commit, if the path now names another file than the open one. After a failed commit the transaction is still
    /// open: commit again or roll back.
    void beginTrans(Begin mode = Begin::AsNeeded);
    void commitTrans();
    void rollback();
    int transactionDepth() const;

private:
    friend class Database;
    std::shared_ptr<WorkspaceImpl> m_impl;
};

/// Begins a writing transaction; the destructor rolls it back unless commit() was called.
class Transaction
{
public:
    explicit Transaction(Workspace &workspace)
        : m_workspace(&workspace)
    {
        workspace.beginTrans(Workspace::Begin::Writing);
    }
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit();
    void rollback();

private:
    Workspace *m_workspace;
};

} // namespace dao

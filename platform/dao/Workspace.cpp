#include "Workspace.h"

#include "WorkspaceImpl.h"

#include <exception>
#include <utility>

namespace dao {

Workspace::Workspace()
    : m_impl(std::make_shared<WorkspaceImpl>())
{
}

Workspace::~Workspace()
{
    try {
        while (m_impl->depth() > 0)
            m_impl->rollback();
    } catch (const std::exception &) {
        // A destructor must not throw. Closing the files rolls back what is still open.
    }
}

void Workspace::beginTrans(Begin mode)
{
    m_impl->begin(mode);
}

void Workspace::commitTrans()
{
    m_impl->commit();
}

void Workspace::rollback()
{
    m_impl->rollback();
}

int Workspace::transactionDepth() const
{
    return m_impl->depth();
}

Transaction::~Transaction()
{
    if (!m_workspace)
        return;
    try {
        m_workspace->rollback();
    } catch (const std::exception &) {
        // The transaction is left by an exception, which is more useful to the caller than this failure.
    }
}

void Transaction::commit()
{
    m_workspace->commitTrans();
    m_workspace = nullptr;
}

void Transaction::rollback()
{
    Workspace *workspace = std::exchange(m_workspace, nullptr);
    workspace->rollback();
}

} // namespace dao

#include "SessionTransaction.h"

namespace db {

SessionTransaction::~SessionTransaction()
{
    if (!isOpen())
        return;
    try {
        while (m_session->workspace().transactionDepth() >= m_depth)
            m_session->workspace().rollback();
    } catch (const std::exception &) {
        // Left by an exception: that one is to be told. The session rolls back when it is closed.
    }
}

bool SessionTransaction::begin(bool rethrow)
{
    if (!beginTrans(*m_session, rethrow, Begin::Writing))
        return false;
    m_depth = m_session->workspace().transactionDepth();
    return true;
}

bool SessionTransaction::isOpen() const
{
    return m_depth > 0 && m_session->isOpen() && m_session->workspace().transactionDepth() >= m_depth;
}

bool SessionTransaction::commit()
{
    if (!commitTrans(*m_session)) {
        rollback();
        return false;
    }
    m_depth = 0;
    return true;
}

void SessionTransaction::rollback()
{
    // A commit that failed may have ended the transaction itself.
    while (isOpen())
        rollbackTrans(*m_session);
    m_depth = 0;
}

} // namespace db

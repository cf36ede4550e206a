#include "WorkspaceImpl.h"

#include <dao/store/ErrorTranslation.h>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

constexpr int kDeepestNesting = 5;
const QString kSource = u"DAO.Workspace"_s;

} // namespace

void WorkspaceImpl::begin(BeginMode mode)
{
    if (m_depth >= kDeepestNesting)
        throw store::engineError(error::TooManyTransactions, kSource);
    size_t begun = 0;
    try {
        for (; begun < m_members.size(); ++begun)
            m_members[begun]->beginLevel(m_depth, mode);
    } catch (...) {
        while (begun > 0)
            m_members[--begun]->rollbackLevel(m_depth);
        throw;
    }
    ++m_depth;
}

void WorkspaceImpl::commit()
{
    if (m_depth == 0)
        throw store::engineError(error::NoTransaction, kSource);
    const int level = m_depth - 1;
    for (TransactionMember *member : m_members)
        member->commitLevel(level);
    m_depth = level;
}

void WorkspaceImpl::rollback()
{
    if (m_depth == 0)
        throw store::engineError(error::NoTransaction, kSource);
    --m_depth;
    for (TransactionMember *member : m_members)
        member->rollbackLevel(m_depth);
}

void WorkspaceImpl::join(TransactionMember &member)
{
    for (int level = 0; level < m_depth; ++level)
        member.beginLevel(level, BeginMode::AsNeeded);
    m_members.push_back(&member);
}

} // namespace dao

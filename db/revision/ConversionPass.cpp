#include "ConversionPass.h"

#include "Messages.h"

namespace db {

ConversionPass::ConversionPass(DatabaseSession &session, ConversionRequest &request, tarnwick::Progress *progress)
    : m_session(&session)
    , m_request(&request)
    , m_progress(progress)
{
    if (m_progress)
        database().setProgress(this);
}

ConversionPass::~ConversionPass()
{
    if (!m_session->isOpen())
        return;
    if (m_progress)
        database().setProgress(nullptr);
    try {
        rollback();
    } catch (const std::exception &) {
        // Left by an exception: that one is to be told. The session rolls back when it is closed.
    }
}

void ConversionPass::enterStep(int step, int steps)
{
    m_step = step;
    m_steps = steps;
    if (cancelled())
        throw tarnwick::Cancelled();
}

bool ConversionPass::cancelled()
{
    if (!m_progress)
        return false;
    m_progress->report(m_step, m_steps, QString::fromUtf16(messages::kConverting.text));
    return m_progress->cancelled();
}

void ConversionPass::beginChanges()
{
    if (m_changing)
        return;
    beginTrans(*m_session, true);
    m_changing = true;
}

bool ConversionPass::commit()
{
    if (!m_changing)
        return true;
    if (!commitTrans(*m_session)) {
        rollback();
        return false;
    }
    m_changing = false;
    return true;
}

void ConversionPass::rollback()
{
    if (!m_changing)
        return;
    m_changing = false;
    // A commit that failed may have ended the transaction itself.
    while (m_session->workspace().transactionDepth() > 0)
        rollbackTrans(*m_session, true);
}

} // namespace db

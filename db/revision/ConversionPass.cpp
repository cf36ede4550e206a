#include "ConversionPass.h"

#include "Messages.h"

#include <db/DamageCheck.h>
#include <QDir>

namespace db {

ConversionPass::ConversionPass(DatabaseSession &session, ConversionRequest &request, tarnwick::Progress *progress)
    : m_session(&session)
    , m_request(&request)
    , m_progress(progress)
{
    if (m_progress)
        database().setProgress(this);
    m_stamp = database().changeStamp();
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

bool ConversionPass::requestStep(const QString &description)
{
    if (!m_request->request(description))
        return false;
    lock();
    if (m_session->conversion.backup.isEmpty())
        requireUndamaged();
    return m_request->backUp();
}

void ConversionPass::requireUndamaged()
{
    // A working copy of a Jet file was made just now. What others made may have been damaged for long.
    const bool isCopy = database().name() != m_session->path();
    if (isCopy || refuseDamaged(*m_session, QString::fromUtf16(messages::kNotConvertedAsDamaged.text), nullptr))
        return;
    m_session->conversion.approved = false;
    throw Aborted();
}

void ConversionPass::lock()
{
    if (m_locked)
        return;
    beginChanges();
    try {
        database().lockForChanges();
    } catch (const dao::DaoException &exception) {
        showDaoError(prompts(), exception, messages::kLockForConversion, QDir::toNativeSeparators(m_session->path()));
        throw Aborted();
    }
    m_locked = true;
    if (database().changeStamp() != m_stamp)
        throw ChangedMeanwhile();
}

void ConversionPass::startAgain()
{
    m_session->conversion.requested.clear();
    m_session->conversion.failed.clear();
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
    m_changing = m_locked = false;
    return true;
}

void ConversionPass::rollback()
{
    if (!m_changing)
        return;
    m_changing = m_locked = false;
    // A commit that failed may have ended the transaction itself.
    while (m_session->workspace().transactionDepth() > 0)
        rollbackTrans(*m_session, true);
}

} // namespace db

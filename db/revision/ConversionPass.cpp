#include "ConversionPass.h"

#include "Messages.h"

#include <db/DamageCheck.h>
#include <QDir>
#include <utility>

namespace db {

ConversionPass::ConversionPass(DatabaseSession &session, ConversionRequest &request, tarnwick::Progress *progress)
    : m_session(&session)
    , m_request(&request)
    , m_progress(progress)
    , m_cancellable(session.database(), progress)
    , m_transaction(session)
{
    m_stamp = database().changeStamp();
}

void ConversionPass::enterStep(int step, int steps)
{
    m_step = step;
    m_steps = steps;
    reportStep();
    if (m_progress && m_progress->cancelled())
        throw tarnwick::Cancelled();
}

void ConversionPass::reportStep()
{
    const auto &what = m_session->conversion.approved ? messages::kConverting : messages::kRefreshing;
    if (m_progress)
        m_progress->report(m_step, m_steps, QString::fromUtf16(what.text));
}

bool ConversionPass::requestStep(const QString &description)
{
    if (!m_request->request(description))
        return false;
    beginChanges();
    if (m_session->conversion.backup.isEmpty())
        requireUndamaged();
    return m_request->backUp();
}

void ConversionPass::requireUndamaged()
{
    // A working copy of a Jet file was just created by this program. Files of other programs may have been damaged
    // earlier.
    const bool isCopy = database().name() != m_session->path();
    if (isCopy || refuseDamaged(*m_session, QString::fromUtf16(messages::kNotConvertedAsDamaged.text), nullptr))
        return;
    m_session->conversion.approved = false;
    throw Aborted();
}

void ConversionPass::startAgain()
{
    forgetSteps(*m_session);
}

void ConversionPass::beginChanges()
{
    if (isChanging())
        return;
    const bool isConverting = m_session->conversion.approved;
    const tarnwick::Message &failure = isConverting ? messages::kLockForConversion : messages::kLockForRefresh;
    const auto begin = [this] { m_transaction.begin(true); };
    if (!tarnwick::attempt(prompts(), begin, failure, QDir::toNativeSeparators(m_session->path()))) {
        m_session->conversion.approved = false;
        throw Aborted();
    }
    reportStep(); // the wait may have been reported last
    if (database().changeStamp() != m_stamp)
        throw ChangedMeanwhile();
}

bool ConversionPass::commit()
{
    return !isChanging() || m_transaction.commit();
}

void ConversionPass::rollback()
{
    m_transaction.rollback();
}

} // namespace db

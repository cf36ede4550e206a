#include "Guarded.h"

#include <exception>
#include <QCursor>
#include <QGuiApplication>

namespace tarnwick {

using namespace Qt::StringLiterals;

// Reason of the failure; empty if the work succeeded or was cancelled.
static QString reasonOfFailure(const std::function<void()> &work, bool &done)
{
    done = false;
    try {
        work();
        done = true;
    } catch (const Cancelled &) {
        // the user stopped the work and needs no message
    } catch (const Error &error) {
        return error.text();
    } catch (const std::bad_alloc &) {
        return u"There is not enough memory."_s;
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

bool guarded(UserPrompts &prompts, const std::function<void()> &work)
{
    bool done = false;
    const QString reason = reasonOfFailure(work, done);
    if (!reason.isEmpty())
        prompts.showError(kErrorSeverity, 0, reason);
    return done;
}

bool guarded(UserPrompts &prompts, const Message &message, const std::function<void()> &work)
{
    bool done = false;
    const QString reason = reasonOfFailure(work, done);
    if (!reason.isEmpty())
        prompts.showError(kErrorSeverity, message.number, format(message.text) + u"\n\n" + reason);
    return done;
}

WaitCursor::WaitCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace tarnwick

#include "Guarded.h"

#include <QCursor>
#include <QGuiApplication>
#include <tarnwick/Failures.h>

namespace tarnwick {

bool guarded(UserPrompts &prompts, const std::function<void()> &work)
{
    return guarded(prompts, Message{0, u""}, work);
}

bool guarded(UserPrompts &prompts, const Message &message, const std::function<void()> &work)
{
    try {
        return attemptCancellable(prompts, work, message) == Outcome::Done;
    } catch (const std::exception &failure) {
        showFailure(prompts, failure, message);
        return false;
    }
}

WaitCursor::WaitCursor()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor()
{
    QGuiApplication::restoreOverrideCursor();
}

UsualCursor::UsualCursor()
    : m_isNeeded(QGuiApplication::overrideCursor() != nullptr)
{
    if (m_isNeeded)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
}

UsualCursor::~UsualCursor()
{
    if (m_isNeeded)
        QGuiApplication::restoreOverrideCursor();
}

} // namespace tarnwick

#pragma once
#include "base/Error.h"
#include "Prompts.h"

namespace tarnwick {

/// How the work of a command ended.
enum class Outcome { Done, Failed, Cancelled };

/// The message of a command and, below an empty line, the reason: Error::details(), or what() of any other exception.
/// Without a message: the reason alone.
QString failureText(const QString &message, const std::exception &failure);
/// Shows an error box of severity 3 and writes its text to the program's log: category "arvo.failures", information
/// level. Off unless the application or QT_LOGGING_RULES enables it.
void showFailure(UserPrompts &prompts, int number, const QString &text);

template <typename... Args>
void showFailure(UserPrompts &prompts, const std::exception &failure, const Message &message, const Args &...args)
{
    showFailure(prompts, message.number, failureText(format(QStringView(message.text), args...), failure));
}

/// Runs work. If it throws an Error, shows the message with the reason in an error box and returns false. Cancelled and
/// exceptions that are not an Error are passed on.
template <typename Work, typename... Args>
bool attempt(UserPrompts &prompts, const Work &work, const Message &message, const Args &...args)
{
    try {
        work();
        return true;
    } catch (const Error &error) {
        showFailure(prompts, error, message, args...);
        return false;
    }
}

/// Like attempt(), but also tells whether the user cancelled the work.
template <typename Work, typename... Args>
Outcome attemptCancellable(UserPrompts &prompts, const Work &work, const Message &message, const Args &...args)
{
    try {
        return attempt(prompts, work, message, args...) ? Outcome::Done : Outcome::Failed;
    } catch (const Cancelled &) {
        return Outcome::Cancelled;
    }
}

} // namespace tarnwick

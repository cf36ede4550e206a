#pragma once
#include <tarnwick/Prompts.h>

#include <functional>

namespace tarnwick {

/// Runs what a slot has to do. No exception may cross an event handler: a Cancelled is silent, every other failure is
/// shown through the prompts. False when it did not reach its end.
bool guarded(UserPrompts &prompts, const std::function<void()> &work);

/// The same, with the command's own message and number first and the reason below it.
bool guarded(UserPrompts &prompts, const Message &message, const std::function<void()> &work);

/// The wait cursor while the object lives.
class WaitCursor
{
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

} // namespace tarnwick

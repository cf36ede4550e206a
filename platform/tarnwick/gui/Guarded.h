#pragma once
#include <tarnwick/Prompts.h>

#include <functional>

namespace tarnwick {

/// Runs the body of a slot. No exception may leave an event handler: Cancelled is ignored, any other exception is shown
/// through the prompts. Returns false if the work did not complete.
bool guarded(UserPrompts &prompts, const std::function<void()> &work);

/// Shows the command's own message and number first and the reason below it.
bool guarded(UserPrompts &prompts, const Message &message, const std::function<void()> &work);

/// Shows the wait cursor while the object lives.
class WaitCursor
{
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};

/// Shows the normal cursor while the object lives, because work with the wait cursor waits for the user.
class UsualCursor
{
public:
    UsualCursor();
    ~UsualCursor();
    UsualCursor(const UsualCursor &) = delete;
    UsualCursor &operator=(const UsualCursor &) = delete;

private:
    bool m_isNeeded;
};

} // namespace tarnwick

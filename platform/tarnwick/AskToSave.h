#pragma once
#include "Prompts.h"

namespace tarnwick {

/// Asks whether changes shall be saved before they are replaced: "Yes" saves them, "No" discards them. Returns true if
/// they may be replaced; false after "Cancel" or if saving returned false. args: of the question.
template <typename Save, typename... Args>
bool saveOrDiscard(UserPrompts &prompts, const Message &question, Save save, const Args &...args)
{
    switch (prompts.question(Buttons::YesNoCancel, question, args...)) {
    case Answer::Yes:
        return save();
    case Answer::No:
        return true;
    default:
        return false;
    }
}

} // namespace tarnwick

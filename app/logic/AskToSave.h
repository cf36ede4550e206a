#pragma once
#include <tarnwick/Prompts.h>

namespace app {

/// Asks whether changes are to be saved before something takes their place: "Yes" saves, "No" lets them go. True when
/// they may be replaced: not after "Cancel", nor when saving gave false.
template <typename Save>
bool saveOrLetGo(tarnwick::UserPrompts &prompts, const tarnwick::Message &question, Save save)
{
    switch (prompts.question(tarnwick::Buttons::YesNoCancel, question)) {
    case tarnwick::Answer::Yes:
        return save();
    case tarnwick::Answer::No:
        return true;
    default:
        return false;
    }
}

} // namespace app

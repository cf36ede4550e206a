#pragma once
#include <tarnwick/Prompts.h>

/// Messages of the report editor. Number 0: the message has none.
namespace brannock::messages {

using tarnwick::Message;

inline constexpr Message kValueRefused{0, u"The value was not stored.\n\n%S"};
inline constexpr Message kReadReport{0, u"Could not read report file."};
inline constexpr Message kNoProblems{0, u"No entry has a problem."};

} // namespace brannock::messages

#pragma once
#include "OptionFile.h"
#include "Prompts.h"

#include <functional>

namespace tarnwick {

namespace messages {

inline constexpr Message kOptionsUnreadable{0, u"Could not read the options.\n\n%S"};
inline constexpr Message kOptionsNotStored{0, u"Could not store the options.\n\n%S"};

} // namespace messages

/// Loads a record; what is wrong with its file is said, and the record keeps its values. True when it was loaded, false
/// also without a file.
bool loadOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts);
/// Stores a record that is kept by the way: that it could not be is said in the status line, since a folder that cannot
/// be written must not bring up a box at every step.
void storeOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts);
/// Changes a record that several running programs keep in one file, and stores it: what another has stored meanwhile is
/// taken over first, and no other one changes the file between the two. Throws FileError when it could not be stored.
void changeStoredOptions(OptionFile &options, const PathRoots &roots, const std::function<void()> &change);
/// The same; a failure is said as storeOptions() does.
void changeOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts,
                   const std::function<void()> &change);

} // namespace tarnwick

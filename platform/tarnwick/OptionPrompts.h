#pragma once
#include "OptionFile.h"
#include "Prompts.h"

#include <functional>

namespace tarnwick {

namespace messages {

inline constexpr Message kOptionsUnreadable{0, u"Could not read the options.\n\n%S"};
inline constexpr Message kOptionsNotStored{0, u"Could not store the options.\n\n%S"};

} // namespace messages

/// Loads a record. An error in its file is reported and the record keeps its values. Returns true if it was loaded;
/// false also if there is no file.
bool loadOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts);
/// Stores a record in the background of another action: a failure is reported in the status line only, since with a
/// read-only folder a message box would appear again and again.
void storeOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts);
/// Changes a record that several running programs keep in one file, and stores it. First loads what other programs have
/// stored; a lock prevents changes by others until it is stored. Throws FileError if it cannot be stored.
void changeStoredOptions(OptionFile &options, const PathRoots &roots, const std::function<void()> &change);
/// changeStoredOptions(), but a failure is reported in the status line.
void changeOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts,
                   const std::function<void()> &change);

} // namespace tarnwick

#pragma once
#include <tarnwick/Prompts.h>

/// Messages of the report conversion.
namespace conversion::messages {

using tarnwick::Message;

inline constexpr Message kCouldNotLoadText{0, u"Could not load text report."};
inline constexpr Message kCouldNotLoadSpec{0, u"Could not load report conversion spec."};
inline constexpr Message kDefaultSpecUsed{0, u"\"%S\" does not exist; the built-in format is used."};
inline constexpr Message kCouldNotStoreReport{0, u"Could not store report."};
inline constexpr Message kOverwrite{0, u"Report \"%S\" already exists.\nDo you wish to overwrite it?"};
inline constexpr Message kSameTarget{
    0, u"\"%S\" was not stored: \"%S\" is already the report of another text of this command."};
/// The stray apostrophe is part of the message.
inline constexpr Message kStored{0, u"Stored \"%S\"'"};

} // namespace conversion::messages

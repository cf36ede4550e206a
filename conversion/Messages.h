#pragma once
#include <tarnwick/Prompts.h>

/// Messages of the report conversion.
namespace conversion::messages {

using tarnwick::Message;

inline constexpr Message kCouldNotLoadText{0, u"Could not load text report."};
inline constexpr Message kCouldNotLoadSpec{0, u"Could not load report conversion spec."};
inline constexpr Message kCouldNotStoreReport{0, u"Could not store report."};
inline constexpr Message kOverwrite{0, u"Report \"%S\" already exists.\nDo you wish to overwrite it?"};
/// The stray apostrophe is part of the message.
inline constexpr Message kStored{0, u"Stored \"%S\"'"};

} // namespace conversion::messages

#pragma once
#include "Prompts.h"

/// Messages of the toolkit's own dialogs. Number 0: the message has none.
namespace tarnwick::messages {

inline constexpr Message kAskRestoreDraft{0, u"ARVO did not end properly the last time.\n\nChanges of %S that were not "
                                             u"saved have been kept as of %t.\n\nDo you wish to restore them?"};
inline constexpr Message kRestoredDraft{0, u"Restored %S; it has not been saved yet."};
inline constexpr Message kRestoreDraftFailed{0, u"Could not restore the changes of %S."};
inline constexpr Message kKeepDraftFailed{0, u"The changes cannot be kept for the case of a crash: %S"};

inline constexpr Message kFileNumberNotValid{0, u"Current file number=%d is not valid."};
inline constexpr Message kFileChanged{
    0, u"\"%S\" was changed by another program after it was read.\n\nDo you wish to read it again? Then nothing is "
       u"stored yet, and your changes of its entries are lost."};
inline constexpr Message kFileSelected{0, u"Selected file %d."};
inline constexpr Message kPrintFailed{0, u"Could not print."};
inline constexpr Message kPrintCutCells{0, u"%D cells were cut, since their columns are too narrow for their texts."};
inline constexpr Message kNoRowsSelected{0, u"No rows are selected."};
inline constexpr Message kStoredPdf{0, u"Stored \"%S\"."};

} // namespace tarnwick::messages

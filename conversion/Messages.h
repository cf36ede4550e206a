#pragma once
#include <tarnwick/Prompts.h>

/// Messages of the report conversion.
namespace conversion::messages {

using tarnwick::Message;

inline constexpr Message kCouldNotLoadText{0, u"Could not load text report."};
inline constexpr Message kCouldNotLoadSpec{0, u"Could not load report conversion spec."};
inline constexpr Message kDefaultSpecUsed{0, u"\"%S\" does not exist; the built-in format is used."};
inline constexpr Message kCouldNotStoreReport{0, u"Could not store report."};
// Dialogs
inline constexpr Message kConvertCaption{0, u"Convert %S Report - %S"};
inline constexpr Message kPrinting{0, u"The report is printing."};
inline constexpr Message kOptionsUnchanged{0, u"Options unchanged."};
inline constexpr Message kSaveChanges{0, u"Do you wish to save changes?"};
inline constexpr Message kFormatCaption{0, u"Format - %S"};
inline constexpr Message kOpened{0, u"Opened \"%S\"."};
inline constexpr Message kSaved{0, u"Saved \"%S\"."};
inline constexpr Message kSaveChangesFirst{0, u"Do you wish to save changes first?"};
inline constexpr Message kFormatUnchanged{0, u"Format unchanged."};
inline constexpr Message kCouldNotSaveSpec{0, u"Could not save report conversion spec."};
inline constexpr Message kCouldNotPrintOptions{0, u"Could not print report conversion options."};
inline constexpr Message kResetFormat{0, u"Do you wish to replace all settings of the format by the built-in ones?"};
inline constexpr Message kNotANumber{0, u"\"%S\" is not a whole number from %d to %d."};
inline constexpr Message kLastBeforeFirst{0, u"The last column %d is before the first column %d."};
inline constexpr Message kNotAColour{0, u"\"%S\" is not a color such as #77AADD."};
inline constexpr Message kMarkColumns{
    0, u"Mark the columns in the text first: drag over them, or use Shift and the arrows."};
inline constexpr Message kRemarks{0, u"%D remarks on \"%S\"; the lines are marked with \"!\". First: %S"};
inline constexpr Message kConverted{0, u"Converted \"%S\": %D entries."};
inline constexpr Message kNotConverted{0, u"\"%S\" is not converted."};
inline constexpr Message kGoOnWithNextFile{0, u"\"%S\" was not stored.\n\nDo you wish to go on with the next file?"};
inline constexpr Message kLoseEdits{
    0,
    u"The entries of %D files were changed by hand.\n\nDo you wish to convert the texts again and lose these changes?"};
inline constexpr Message kCloseWithoutStore{
    0, u"The entries of %D files were changed and not stored.\n\nDo you wish to close without storing them?"};

inline constexpr Message kOverwrite{0, u"Report \"%S\" already exists.\nDo you wish to overwrite it?"};
inline constexpr Message kSameTarget{
    0, u"\"%S\" was not stored: \"%S\" is already the report of another text of this command."};
/// The stray apostrophe is part of the message.
inline constexpr Message kCouldNotLog{0, u"The conversion cannot be entered into the project's log."};
inline constexpr Message kStored{0, u"Stored \"%S\"'"};

} // namespace conversion::messages

#pragma once
#include <tarnwick/Prompts.h>

/// Every text of the report upload and the cal list. Number 0: the message has none.
namespace results::messages {

using tarnwick::Message;

// Upload
inline constexpr Message kUnknownTubeLine{0, u"\tentry=%3d row=%3d col=%3d sec=%3d\n"};
inline constexpr Message kMoreUnknownTubes{0, u"\t...\n"};
inline constexpr Message kUnknownTubes{
    0, u"Warning: The following %d report entries are for tubes do not exist in \"%S\":\n%S"
       u"Do you wish to upload them along with the valid tubes anyway?"};
inline constexpr Message kUnknownTubesCancelled{0, u"Upload cancelled"};
inline constexpr Message kFillInCal{0, u"Please fill in the cal information!"};
inline constexpr Message kOtherSite{
    0, u"Error: Site %S Comp %S does not agree with project!\nDo you wish to upload anyway?"};
inline constexpr Message kContinueAfterFailure{0, u"ERROR:\n\tCould not upload entry %d\n\tDo you wish to continue?"};
inline constexpr Message kUploaded{0, u"Successfully uploaded %d entries."};
inline constexpr Message kPrinting{0, u"The report is printing."};
inline constexpr Message kGoOnWithNextFile{0, u"\"%S\" was not uploaded.\n\nDo you wish to go on with the next file?"};
inline constexpr Message kCloseWithoutUpload{
    0, u"The entries of %D files were changed and not uploaded.\n\nDo you wish to close without uploading them?"};
inline constexpr Message kTerminated{0, u"Upload terminated."};
inline constexpr Message kUploading{0, u"Uploading entries"};
inline constexpr Message kCouldNotLog{0, u"The upload cannot be entered into the project's log."};
inline constexpr Message kChecked{0, u"Checked: %D of %D entries would be stored, %D problems."};

// Duplicate test
inline constexpr Message kCheckCal{0, u"Could not check for existing cal."};
inline constexpr Message kCalExists{
    0, u"There are already %d report entries for\n\tCal\t\t%d\n\tUser Type\t%S\n\tSite Code\t\t%S\n\tComponent\t%S\n"
       u"\tOutage\t\t%S\n\tSection\t\t%S\nDo you wish to delete them before uploading this report?"};
inline constexpr Message kAreYouSure{0, u"Are you sure?"};
inline constexpr Message kUploadCancelled{0, u"Upload cancelled."};
inline constexpr Message kOldCalDeleted{0, u"Old cal was deleted."};

// Cal list
inline constexpr Message kCalsCaption{0, u"Cals In - %U"};
inline constexpr Message kUpdateCalList{0, u"Could not update Cal list."};
inline constexpr Message kDeleteCal{0, u"Are you sure you wish to delete this cal?"};
inline constexpr Message kDeleteCals{0, u"Are you sure you wish to delete these %D cals?"};
inline constexpr Message kCalListCancelled{0, u"Cal list cancelled."};
inline constexpr Message kDeleteCalCancelled{0, u"Delete cal cancelled."};
inline constexpr Message kSelectCal{0, u"Select a cal to delete!"};
inline constexpr Message kCalDeleted{0, u"Cal deleted successfully!"};
inline constexpr Message kCouldNotDeleteCal{0, u"Could not delete Cal from 'report' table."};
inline constexpr Message kSaveChanges{0, u"Do you wish to save changes?"};

} // namespace results::messages

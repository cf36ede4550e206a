#pragma once
#include <tarnwick/Prompts.h>

/// Messages of the map, its legend, headers and files. Numbers are unique in the program.
namespace map::messages {

using tarnwick::Message;

// Fills and "Update Map".
inline constexpr Message kFillDone{0, u"%S: %D tubes."};
inline constexpr Message kFillOfFormerText{
    0, u"%S: %D tubes of the text that was executed; \"Update Map\" takes those of the present text."};
inline constexpr Message kUpdateBegins{0, u"Execute ..."};
inline constexpr Message kUpdatingEntry{0, u"Updating entry %d %S ..."};
inline constexpr Message kUpdateCancelled{0, u"Update of the map cancelled."};
inline constexpr Message kUpdateDone{0, u"Done updating map."};
inline constexpr Message kUpdateChanged{0, u"Entries whose tubes have changed:\n\n%S"};
inline constexpr Message kEntriesLoseTubes{
    0, u"These entries depend on the selection. No tube is selected (map files do not store the selection), so these "
       u"entries would lose all their tubes:\n\n%S\n\n"};
inline constexpr Message kEntriesNotComputed{
    0, u"These entries depend on a query. No database is connected, so they keep their present tubes:\n\n%S\n\n"};
inline constexpr Message kAskLeaveEntries{
    0, u"Choose \"Yes\" to update only the other entries.\n\nChoose \"No\" to update also the entries that depend on "
       u"the selection.\n\nChoose \"Cancel\" to change nothing."};
inline constexpr Message kAskUpdate{0, u"Do you wish to update the other entries?"};

// Entries of the legend.
inline constexpr Message kAskDeleteAllEntries{0, u"Are you sure you want to delete all entries?"};
inline constexpr Message kEntryShown{0, u"Shown: \"%S\"."};
inline constexpr Message kEntryHidden{0, u"Hidden: \"%S\"."};
inline constexpr Message kOnlyEntryShown{0, u"Only \"%S\" is shown."};
inline constexpr Message kAllEntriesShown{0, u"All entries are shown."};
inline constexpr Message kShownSwapped{0, u"Swapped shown and hidden entries."};
inline constexpr Message kEntryMoved{0, u"Moved \"%S\" to place %d of %d."};
inline constexpr Message kEntryDeleted{0, u"Deleted \"%S\"."};
inline constexpr Message kEntriesDeleted{0, u"Deleted all entries (%D)."};
inline constexpr Message kEntryRenamed{0, u"Renamed \"%S\" to \"%S\"."};
inline constexpr Message kEntrySymbol{0, u"Changed the symbol of \"%S\" to %S."};
inline constexpr Message kEntryAllSections{0, u"\"%S\" now marks all sections."};
inline constexpr Message kEntryOwnSections{0, u"\"%S\" now marks only the sections of its tubes."};

// Map files.
inline constexpr Message kReadMapFailed{1039, u"Could not read map file."};
inline constexpr Message kStoreMapFailed{0, u"Could not store map."};
inline constexpr Message kOtherModel{1041, u"Map was created using model '%S.' but the current model is '%S'"};
inline constexpr Message kAskReplaceFile{0, u"\"%S\" already exists.\n\nDo you wish to replace it?"};
inline constexpr Message kAskReplaceChanged{0, u"\"%S\" was changed by another program since it was opened here.\n\nDo "
                                               u"you wish to replace it with this map?"};
inline constexpr Message kAskReplaceOtherModel{0, u"Do you wish to replace \"%S\" by a map of the current model?"};
inline constexpr Message kImported{0, u"Imported \"%S\"."};
inline constexpr Message kExported{0, u"Exported \"%S\"."};

// Headers.
inline constexpr Message kLoadHeaderFailed{1037, u"Could not load map header."};
inline constexpr Message kStoreHeaderFailed{1038, u"Could not store map header."};
inline constexpr Message kSetHeader{0, u"Set new map header."};
inline constexpr Message kHeaderUnchanged{0, u"Header unchanged."};
inline constexpr Message kStoredHeader{0, u"Stored map header \"%S\"."};
inline constexpr Message kOpenedHeader{0, u"Opened map header \"%S\"."};
inline constexpr Message kAskSaveChanges{0, u"Do you wish to save changes?"};

// Recovery copies.
inline constexpr Message kAskRestoreMap{0, u"ARVO ended unexpectedly the last time.\n\nThere is a copy of the unsaved "
                                           u"changes of map \"%S\", written %t.\n\nDo you wish to restore them?"};
inline constexpr Message kRestoredMap{0, u"Restored map \"%S\"; it has not been saved yet."};
inline constexpr Message kRecoveryFailed{0, u"Unsaved changes of the map cannot be protected against a crash: %S"};

} // namespace map::messages

#pragma once
#include <tarnwick/Prompts.h>

/// What the map, its legend and its files say. Numbers are unique in the program.
namespace map::messages {

using tarnwick::Message;

// Fills and "Update Map".
inline constexpr Message kFillDone{0, u"%S: %D tubes."};
inline constexpr Message kUpdateBegins{0, u"Execute ..."};
inline constexpr Message kUpdatingEntry{0, u"Updating entry %d %S ..."};
inline constexpr Message kUpdateCancelled{0, u"Update of the map cancelled."};
inline constexpr Message kUpdateDone{0, u"Done updating map."};
inline constexpr Message kUpdateChanged{0, u"Entries that have other tubes now:\n\n%S"};
inline constexpr Message kEntriesLoseTubes{
    0,
    u"These entries take tubes that are selected. No tube is selected now, and map files do not keep the selection, so "
    u"the entries would lose all their tubes:\n\n%S\n\n"};
inline constexpr Message kEntriesNotComputed{
    0, u"These entries take the tubes of a query. No database is connected, so they keep the tubes that they have:\n\n"
       u"%S\n\n"};
inline constexpr Message kAskLeaveEntries{
    0,
    u"Choose \"Yes\" to leave these entries as they are and update the others.\n\nChoose \"No\" to update the entries "
    u"that take selected tubes, too.\n\nChoose \"Cancel\" to change nothing."};
inline constexpr Message kAskUpdate{0, u"Do you wish to update the other entries?"};

// Entries of the legend.
inline constexpr Message kAskDeleteAllEntries{0, u"Are you sure you want to delete all entries?"};
inline constexpr Message kEntryShown{0, u"Shown: \"%S\"."};
inline constexpr Message kEntryHidden{0, u"Hidden: \"%S\"."};
inline constexpr Message kOnlyEntryShown{0, u"Shown alone: \"%S\"."};
inline constexpr Message kAllEntriesShown{0, u"All entries are shown."};
inline constexpr Message kShownSwapped{0, u"Hidden entries are shown now, and shown ones hidden."};
inline constexpr Message kEntryMoved{0, u"Moved \"%S\" to place %d of %d."};
inline constexpr Message kEntryDeleted{0, u"Deleted \"%S\"."};
inline constexpr Message kEntriesDeleted{0, u"Deleted all entries (%D)."};
inline constexpr Message kEntryRenamed{0, u"Renamed \"%S\" to \"%S\"."};
inline constexpr Message kEntrySymbol{0, u"Changed the symbol of \"%S\" to %S."};
inline constexpr Message kEntryAllSections{0, u"\"%S\" marks every section now."};
inline constexpr Message kEntryOwnSections{0, u"\"%S\" marks only the sections of its tubes now."};

// Map files.
inline constexpr Message kReadMapFailed{1039, u"Could not read map file."};
inline constexpr Message kStoreMapFailed{0, u"Could not store map."};
inline constexpr Message kOtherModel{1041, u"Map was created using model '%S.' but the current model is '%S'"};

} // namespace map::messages

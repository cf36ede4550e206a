#pragma once
#include <tarnwick/Prompts.h>

/// What fills, legend and map say. Numbers are unique in the program.
namespace plans::messages {

using tarnwick::Message;

inline constexpr Message kListTubesMissing{1079,
                                           u"Some of the tubes in the list\ndo not exist in the current component."};
inline constexpr Message kNotEnoughTubes{1089, u"Not enough open tubes to do a full fill!"};
inline constexpr Message kQueryFieldsMissing{
    1090, u"Cannot display in map since this query\nis missing the following fields:\n%S"};
inline constexpr Message kQueryTubesMissing{
    1091, u"Query \"%S\"\nreturned %D record%s\nnot exist in the current component.\n\nChoose \"OK\" to show the valid "
          u"tubes in the map.\n\nChoose \"Cancel\" to see the invalid tubes highlighted\nin the query results."};
inline constexpr Message kQueryAddressFailed{
    0, u"In %D of these records the address could not be calculated; the first is record %D, field '%S': %S"};
inline constexpr Message kQueryNotExecuted{1092, u"Must execute a valid query first!"};

inline constexpr Message kDrawsFromFirst{0, u"The sample is drawn from the first %D tubes only.\n\n\"%S\" has %D tubes "
                                            u"to choose from; its random numbers do not reach further."};

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

} // namespace plans::messages

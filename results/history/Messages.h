#pragma once
#include <tarnwick/Prompts.h>

/// Every text of the history. Number 0: the message has none.
namespace results::messages {

using tarnwick::Message;

inline constexpr Message kFetchOutages{0, u"Could not fetch outages."};
inline constexpr Message kFetchDefects{0, u"Could not fetch defects."};
inline constexpr Message kFetchHistory{0, u"Could not fetch history."};
inline constexpr Message kFetchCancelled{0, u"Fetching history was cancelled."};
inline constexpr Message kOpenCancelled{0, u"Loading the history file was cancelled."};
inline constexpr Message kStoreCancelled{0, u"Storing the history was cancelled."};
inline constexpr Message kProcessed{0, u"Processed %D records."};
inline constexpr Message kFetchTime{0, u"Fetch time=%.3f sec."};
inline constexpr Message kFilterDone{0, u"Filter done."};
inline constexpr Message kSorting{0, u"Sorting ..."};
inline constexpr Message kDoneSorting{0, u"Done sorting history."};
inline constexpr Message kSortFetched{0, u"Sort by sec, row, col, latest outage."};
inline constexpr Message kSortTube{0, u"Sort by row, col, indication."};
inline constexpr Message kSortColumn{0, u"Sort by col, row, indication."};
inline constexpr Message kSortIndication{0, u"Sort by indication."};
inline constexpr Message kSortVolts{0, u"Sort by volts."};
inline constexpr Message kSortPhase{0, u"Sort by phase."};
inline constexpr Message kSortPcnt{0, u"Sort by pcnt."};
inline constexpr Message kClearHistory{0, u"Are you sure?\nThis will delete all history entries."};
inline constexpr Message kHistoryLoaded{0, u"Loaded history file."};
inline constexpr Message kHistoryStored{0, u"History stored to \"%S\"."};
inline constexpr Message kCouldNotLoadHistory{0, u"Could not load history file."};
inline constexpr Message kCouldNotStoreHistory{0, u"Could not store history file."};
inline constexpr Message kNotAThreshold{0, u"\"%S\" is no threshold. Type a number, or nothing for no threshold."};
inline constexpr Message kChangeUndone{0, u"Undone: change of entry %D."};
inline constexpr Message kHistoryUncounted{
    0, u"The history file does not state its number of rows: missing rows cannot be noticed."};
inline constexpr Message kEditsNotRestored{
    0, u"%D of %D changes were not restored, because their entries are not there any more:\n%S"};
inline constexpr Message kHistoryCaptionFile{0, u"History File - %S"};
inline constexpr Message kHistoryCaptionDatabase{0, u"History ARVO - Site: %S Comp: %S"};
inline constexpr Message kHistoryPrintHeader{0, u"HISTORY: Site %S Comp %S"};
inline constexpr Message kHistoryCounter{0, u"%7D of %D"};
inline constexpr Message kSaveHistory{0, u"Do you wish to save changes?"};

} // namespace results::messages

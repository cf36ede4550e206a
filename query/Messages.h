#pragma once
#include <tarnwick/Prompts.h>

/// Texts of queries, parameters, results and options that logic shows. Number 0: the message has none.
namespace query::messages {

using tarnwick::Message;

inline constexpr Message kFormatInfo{1060, u"Could not fetch format info."};
inline constexpr Message kQueryParameters{1062, u"Could not get query parameters."};
inline constexpr Message kParametersUnknown{
    1062, u"Could not get query parameters.\n\nNo value is known for %S.\n\nA user macro of the same name (in the "
          u"options, tab \"User Macros\") gives a parameter its value."};
inline constexpr Message kExportResults{1063, u"Could not export query results to a text file."};
inline constexpr Message kDeleteRecord{1064, u"Could not delete record."};
inline constexpr Message kConvertText{1065, u"Could not convert string to value."};
inline constexpr Message kSchemaInfo{1066, u"Could not set schema info."};
inline constexpr Message kSchemaTable{1067, u"Could not set schema table."};
inline constexpr Message kQueryList{1068, u"Could not set query list."};
inline constexpr Message kExecute{1069, u"Could not execute query."};
inline constexpr Message kReadFile{1070, u"Could not read query file."};
inline constexpr Message kStoreFile{1071, u"Could not store query to file."};
inline constexpr Message kViewName{1072, u"Will not overwrite view!"};
inline constexpr Message kStoreQuery{1073, u"Could not store query."};
inline constexpr Message kFetchQuery{1074, u"Could not fetch query."};
inline constexpr Message kDeleteQuery{1075, u"Could not delete query."};
inline constexpr Message kClearRecords{1076, u"Could not clear records."};
inline constexpr Message kCloseRecordset{1077, u"Could not close recordset."};

inline constexpr Message kCellsFailed{0, u"Warning: %S"};
inline constexpr Message kExecuting{0, u"Executing ..."};
inline constexpr Message kExecuteTime{0, u"Execute time=%.3f sec."};
inline constexpr Message kEntries{0, u"%D Entries"};
inline constexpr Message kCancelled{0, u"Cancelled."};
inline constexpr Message kAskSaveChanges{0, u"Do you wish to save changes?"};
inline constexpr Message kParametersUnchanged{0, u"Parameters unchanged."};
inline constexpr Message kLoaded{0, u"Loaded \"%S\"."};
inline constexpr Message kStored{0, u"Stored \"%S\"."};
inline constexpr Message kStoredQuery{0, u"Stored ARVO query \"%S\"."};
inline constexpr Message kDeletedQuery{0, u"Deleted query \"%S\" from the database."};
inline constexpr Message kAskOverwriteQuery{
    0, u"Query \"%S\" already exists in the database.\nDo you wish to overwrite it?"};
inline constexpr Message kAskSaveQuery{0, u"Query \"%S\" has changed.\nDo you wish to save changes?"};
inline constexpr Message kAskClearRecentQueries{0, u"Are you sure?"};
inline constexpr Message kAskReplaceQueryFile{
    0, u"Query file \"%S\" already exists in the project.\nDo you wish to overwrite it?"};
inline constexpr Message kAskUndoChanges{0,
                                         u"Cancel undoes %D changes of the database that were made in the editor:\n\n"
                                         u"%S\n\nDo you wish to undo them?"};
inline constexpr Message kAskUndoChange{0, u"Cancel undoes a change of the database that was made in the editor:\n\n"
                                           u"%S\n\nDo you wish to undo it?"};
inline constexpr Message kNameOfFile{0, u"\"%S\" is a name for query files, because it ends with \".qry\"."};
inline constexpr Message kSetQuery{0, u"Set query \"%U\"."};
inline constexpr Message kSetVersion{0, u"Set query version %d of %d."};
inline constexpr Message kBroughtBack{0, u"Text of \"%S\" as it was until %S."};
inline constexpr Message kExpandedMacros{0, u"Expanded macros."};
inline constexpr Message kTemplate{0, u"Template."};
inline constexpr Message kRowsChanged{0, u"Rows changed: %D."};
inline constexpr Message kStatementOf{0, u"Statement %d of %d."};
inline constexpr Message kStopped{0, u"Stopped."};
inline constexpr Message kStoppedAfter{0, u"Stopped; %D rows are dropped."};
inline constexpr Message kRowsFromBefore{0, u"The rows of the last run are shown."};
inline constexpr Message kAskDropRows{0, u"Inserted rows are not stored yet:\n\n%S\n\n"
                                         u"Do you wish to give them up?"};
inline constexpr Message kNoTextEditor{0, u"The system has no program for \"%S\"."};
inline constexpr Message kReadVersions{0, u"Could not read the former texts of the queries."};
inline constexpr Message kExplain{0, u"Could not explain the statement."};
inline constexpr Message kFormatStatement{0, u"Could not format the statement."};
inline constexpr Message kFormatsRefused{0,
                                         u"Some display formats were refused; these fields have their defaults.\n\n%S"};
inline constexpr Message kEditFormats{0, u"Edit formats."};
inline constexpr Message kFormatsStored{0, u"Stored formats."};
inline constexpr Message kNoFormatChanges{0, u"No changes to display formats."};
inline constexpr Message kFormatsNotRead{0, u"Could not read the display formats."};
inline constexpr Message kFormatsNotStored{0, u"Could not store the display formats."};
inline constexpr Message kFormatRefused{0, u"Not changed: %S."};
inline constexpr Message kFormatReplaced{
    0, u"The format \"%S\" cannot show values of type %S; the type's own format is used."};
inline constexpr Message kSortedByOrdinal{0, u"Sorted by ordinal."};
inline constexpr Message kSortedByName{0, u"Sorted by field name."};
inline constexpr Message kNoTubeQuery{0, u"The results of past outages are read from the history file."};
inline constexpr Message kTubeQuery{0, u"%S Query\n\n%S"};
inline constexpr Message kReportPrinting{0, u"The report is printing."};
inline constexpr Message kForgotValues{0, u"Forgot the values of the parameters of \"%S\"."};
inline constexpr Message kForgotAllValues{0, u"Forgot the values of the parameters of all queries."};
inline constexpr Message kTextNotStored{0, u"\"%S\" was not stored in column %S."};
inline constexpr Message kStoringHistory{0, u"Could not store the query history.\n\n%S"};

// Rows and the map
inline constexpr Message kNoTubeColumns{0, u"The result has no columns \"row\" and \"col\", or no column \"sec\"."};
inline constexpr Message kTubesSelected{0, u"Selected %D tubes on the map."};
inline constexpr Message kRowsOfSelection{0, u"Marked the %D rows of the selected tubes."};

} // namespace query::messages

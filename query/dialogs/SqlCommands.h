#pragma once
#include <tarnwick/CommandTable.h>

namespace query {

/// Commands of the SQL editor.
enum SqlCommand : int {
    NewQuery = 0,
    OpenQuery = 1,
    SaveQuery = 2,
    SaveQueryAs = 3,
    ImportQuery = 4,
    ExportQuery = 5,
    FirstRecentQuery = 6,
    LastRecentQuery = 15,
    NoRecentQuery = 16,
    PrintResult = 17,
    PrintCurrentPage = 18,
    ClearQuery = 19,
    EditDisplayFormats = 20,
    EditSqlOptions = 21,
    ForwardVersion = 22,
    BackVersion = 23,
    ClearRecentQueries = 24,
    ShowTables = 25,
    StoreQuery = 26,
    StoreQueryAs = 27,
    DeleteQuery = 28,
    ExportResults = 29,
    ViewExport = 30,
    ExecuteQuery = tarnwick::kFirstUnnumbered,
    ExecuteSelection,
    FindText,
    FindNextText,
    FormatStatements,
    PreviewResult,
    FirstFormerText,
    LastFormerText = FirstFormerText + 20,
    NoFormerText,
    MarkOnMap,
    SelectOnMap,
    FindSelectedTubes,
    NextPart,
    ExplainStatements,
};

/// Conditions of the commands.
enum SqlCondition : int {
    Always = tarnwick::kAlways,
    Full,     ///< queries can be stored and written
    Versions, ///< the version list has at least two entries
    HasText,
    HasSelection,
    HasMap, ///< there is a map for the rows of the result
};

constexpr int kTextPart = 1; ///< the text with its search: its keys work only while it has the focus

/// The table of the editor's menus and keys.
const tarnwick::CommandTable &sqlCommands();

} // namespace query

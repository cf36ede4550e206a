#pragma once
#include <tarnwick/CommandTable.h>

namespace app {

/// Commands of the main window. The numbers are used by macros of the suite and by the manual.
enum Command : int {
    NewMap = 0,
    OpenMap = 1,
    SaveMap = 2,
    SaveMapAs = 3,
    ImportMap = 4,
    ExportMap = 5,
    PrintSetup = 6,
    PrintPreview = 7,
    Print = 8,
    StoreMetafile = 9,
    StoreBitmap = 10,
    NoRecentProject = 11,
    FirstRecentProject = 12,
    LastRecentProject = 21,
    NoRecentDatabase = 22,
    FirstRecentDatabase = 23,
    LastRecentDatabase = 27,
    NoRecentMap = 28,
    FirstRecentMap = 29,
    LastRecentMap = 33,
    Exit = 34,
    Undo = 35,
    SelectAllTubes = 36,
    SelectAllSymbols = 37,
    SelectSymbol = 38,
    SelectOpenTubes = 39,
    SelectSection = 40,
    SelectGroup = 41,
    SelectRow = 42,
    SelectPeriph = 43,
    DeselectAllTubes = 44,
    DeselectAllSymbols = 45,
    DeselectSymbol = 46,
    DeselectOpenTubes = 47,
    DeselectSection = 48,
    DeselectGroup = 49,
    DeselectRow = 50,
    DeselectPeriph = 51,
    DeleteAllEntries = 52,
    Repairs = 53,
    OpenProject = 54,
    ClearRecentProjects = 55,
    MapFullScreen = 56,
    FlipHorizontal = 57,
    FlipVertical = 58,
    ShowFloatingId = 59,
    NewDatabase = 60,
    OpenDatabase = 61,
    CloseDatabase = 62,
    CreateHistory = 63,
    UploadReports = 64,
    UploadComponent = 65,
    ClearRecentDatabases = 66,
    ClearRecentMaps = 67,
    IgnoreSection = 68,
    AdministrationTool = 69,
    ComponentMaker = 70,
    ConvertReports = 71,
    DesktopShortcut = 72,
    ProjectInfo = 74,
    About = 75,
    // Without numbers.
    Redo = tarnwick::kFirstUnnumbered,
    ZoomIn,
    ZoomOut,
    ZoomFit,
    PreviousView,
    NextView,
    FindTube,
    ListOfChanges,
    NextPart,
    EntryEdit,
    EntrySymbol,
    EntryRename,
    EntryUp,
    EntryDown,
    EntrySolo,
    EntriesAll,
    EntriesInvert,
    EntryDelete,
    EntrySelect,
    CopyTubes,
    ListOfKeys,
    Failures,
    ColoursOfSystem,
    LightColours,
    DarkColours,
    SmallTableText,
    UsualTableText,
    LargeTableText,
    LargestTableText,
    DragRectangle,
    DragLasso,
    DragZoom,
    DragMove,
    MakeRandomFill,
    MakeQueryFill,
    MakeListFill,
    MakeBoxFill,
    MakePatternFill,
    EditMapHeader,
    EditOptions,
    OpenSqlEditor,
    OpenPlans,
    UpdateMap,
    ShowReportLog,
    NewProject,
    DemoProject,
    OpenGuide,
};

/// Parts of the window with keys of their own.
enum WindowPart : int { WholeWindow = 0, LegendArea };

/// Names of the layouts.
constexpr const char16_t *kMenuBar = u"menuBar";
constexpr const char16_t *kMapMenu = u"mapMenu";
constexpr const char16_t *kLegendMenu = u"legendMenu";
constexpr const char16_t *kDragMenu = u"dragModes";
constexpr const char16_t *kMainBar = u"mainBar";
constexpr const char16_t *kViewBar = u"viewBar";
constexpr const char16_t *kLegendBar = u"legendBar"; ///< the buttons above the legend

/// All commands of the main window: numbers, texts, keys, tips, conditions and menu places.
extern const tarnwick::CommandTable kWindowCommands;

} // namespace app

#pragma once
#include <QString>
#include <span>

namespace app {

/// The numbers of the main window's commands, as menus, macros of the suite and the manual call them.
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
    LastCommand = 75,
};

/// What must be so for a command to be offered.
enum class When {
    Always,
    Project,        ///< a project is loaded
    Sections,       ///< the component has sections
    Entries,        ///< the legend has entries
    Undo,           ///< there is a change to take back
    Redo,           ///< there is a change to make again
    PointedTube,    ///< the pop-up menu was opened on a tube
    PointedSymbol,  ///< ... that carries a symbol
    PointedSection, ///< ... of a component with sections
    Later,          ///< comes with a later version: shown, never enabled
};

/// What the conditions look at.
struct CommandContext
{
    bool hasProject = false;
    bool hasSections = false;
    bool hasEntries = false;
    bool canUndo = false;
    bool canRedo = false;
    bool hasPointedTube = false;
    bool pointedTubeHasSymbol = false;
};

struct CommandInfo
{
    int number;
    When when;
    const char16_t *tip;
};

/// Null for a number that no command has.
const CommandInfo *commandInfo(int number);
bool isEnabled(When when, const CommandContext &context);
/// The tip, and when the command is greyed, below it the reason.
QString tipText(const char16_t *tip, When when, const CommandContext &context);

/// One line of a flat menu list.
struct MenuItem
{
    enum Kind { End = 0, Open = 1, Item = 2, Separator = 3, Close = 4 };
    Kind kind;
    const char16_t *text = nullptr; ///< mnemonic marked by "&"; the accelerator after a tab
    int command = -1;
};

/// The accelerator of an item of the menu bar, portable: that of its text, or one that the text does not name. Empty
/// without one.
QString menuKeys(const MenuItem &item);

extern const std::span<const MenuItem> kMenuBar;
extern const std::span<const MenuItem> kMapMenu;
extern const std::span<const MenuItem> kLegendMenu;

/// The buttons of the tool bar that follow those of the fill kinds.
struct ToolButton
{
    const char16_t *text;
    const char16_t *name; ///< of the widget
    When when;
    const char16_t *tip;
};
extern const std::span<const ToolButton> kToolButtons;
/// The tip of a fill kind's button, by the kind's key.
const char16_t *fillButtonTip(QStringView key);
When fillButtonWhen(QStringView key);

/// What the window offers beside the numbered commands: keys, and buttons of the view bar.
enum class Extra {
    Redo,
    ZoomIn,
    ZoomOut,
    ZoomFit,
    PreviousView,
    NextView,
    FindTube,
    Changes,
    NextPart,
    EntryEdit,
    EntrySymbol,
    EntryRename,
    EntryUp,
    EntryDown,
    EntryDelete,
    EntrySelect,
    CopyTubes,
    EntrySolo,
    EntriesAll,
    EntriesInvert,
    Keys,
};
/// Where an extra belongs and where its keys work.
enum class Scope {
    Window, ///< to the window; everywhere
    Side,   ///< to the buttons above the legend; everywhere
    Legend, ///< to the same; while the legend has the focus
    Menu    ///< to the legend's menu; no key
};
struct ExtraInfo
{
    Extra extra;
    Scope scope;
    const char16_t *name; ///< of the action
    const char16_t *text;
    const char16_t *keys; ///< portable key sequences, apart by "|"; null: none
    When when;
    const char16_t *tip;
};
extern const std::span<const ExtraInfo> kExtras;
const ExtraInfo &extraInfo(Extra extra);

} // namespace app

#include "Commands.h"

#include <algorithm>
#include <array>

namespace app {

namespace {

using enum MenuItem::Kind;

constexpr std::array kMenuBarItems{
    MenuItem{Open, u"&File"},
    MenuItem{Item, u"Open Project ...", OpenProject},
    MenuItem{Separator},
    MenuItem{Item, u"&New Map ...\tCtrl+N", NewMap},
    MenuItem{Item, u"&Open Map ...\tCtrl+O", OpenMap},
    MenuItem{Separator},
    MenuItem{Item, u"Import Map ...", ImportMap},
    MenuItem{Item, u"Export Map ...", ExportMap},
    MenuItem{Separator},
    MenuItem{Item, u"&Save Map\tCtrl+S", SaveMap},
    MenuItem{Item, u"Save Map &As ...", SaveMapAs},
    MenuItem{Separator},
    MenuItem{Item, u"Print Set&up ...", PrintSetup},
    MenuItem{Item, u"Print Preview ...", PrintPreview},
    MenuItem{Item, u"&Print ...\tCtrl+P", Print},
    MenuItem{Separator},
    MenuItem{Item, u"Store &Metafile ...", StoreMetafile},
    MenuItem{Item, u"Store &Bitmap ...", StoreBitmap},
    MenuItem{Separator},
    MenuItem{Open, u"Recent Projects"},
    MenuItem{Item, u"<None>", NoRecentProject},
    MenuItem{Close},
    MenuItem{Open, u"Recent Databases"},
    MenuItem{Item, u"<None>", NoRecentDatabase},
    MenuItem{Close},
    MenuItem{Open, u"Recent Maps"},
    MenuItem{Item, u"<None>", NoRecentMap},
    MenuItem{Close},
    MenuItem{Separator},
    MenuItem{Item, u"E&xit ...", Exit},
    MenuItem{Close},
    MenuItem{Open, u"&Edit"},
    MenuItem{Item, u"Undo\tCtrl+Z", Undo},
    MenuItem{Separator},
    MenuItem{Item, u"&Deselect All Tubes", DeselectAllTubes},
    MenuItem{Item, u"Select All &Tubes", SelectAllTubes},
    MenuItem{Item, u"Select All &Symbols", SelectAllSymbols},
    MenuItem{Item, u"Select &Open Tubes", SelectOpenTubes},
    MenuItem{Item, u"Select &Periph", SelectPeriph},
    MenuItem{Separator},
    MenuItem{Item, u"Delete All &Entries", DeleteAllEntries},
    MenuItem{Close},
    MenuItem{Open, u"&Project"},
    MenuItem{Item, u"&Clear Recent Projects ...", ClearRecentProjects},
    MenuItem{Close},
    MenuItem{Open, u"&View"},
    MenuItem{Item, u"Map Full Screen\tEsc", MapFullScreen},
    MenuItem{Item, u"Flip Horizontal", FlipHorizontal},
    MenuItem{Item, u"Flip Vertical", FlipVertical},
    MenuItem{Separator},
    MenuItem{Item, u"Show Floating ID", ShowFloatingId},
    MenuItem{Close},
    MenuItem{Open, u"&Database"},
    MenuItem{Item, u"&New Database ...", NewDatabase},
    MenuItem{Separator},
    MenuItem{Item, u"&Open Database ...", OpenDatabase},
    MenuItem{Item, u"&Close Database", CloseDatabase},
    MenuItem{Separator},
    MenuItem{Item, u"Create &History ...", CreateHistory},
    MenuItem{Item, u"Upload &Reports ...", UploadReports},
    MenuItem{Item, u"Upload Component ...", UploadComponent},
    MenuItem{Separator},
    MenuItem{Item, u"Clear Recent ARVO ...", ClearRecentDatabases},
    MenuItem{Item, u"Clear Recent Maps ...", ClearRecentMaps},
    MenuItem{Close},
    MenuItem{Open, u"&Tools"},
    MenuItem{Item, u"Vantreth ...", AdministrationTool},
    MenuItem{Item, u"Ossory ...", ComponentMaker},
    MenuItem{Close},
    MenuItem{Open, u"&Util"},
    MenuItem{Item, u"Convert Reports ...", ConvertReports},
    MenuItem{Separator},
    MenuItem{Item, u"Create Desktop Shortcut ...", DesktopShortcut},
    MenuItem{Close},
    MenuItem{Open, u"&Help"},
    MenuItem{Item, u"&Project Info", ProjectInfo},
    MenuItem{Item, u"&About ARVO", About},
    MenuItem{Close},
    MenuItem{End},
};

// The two submenus list their items in different orders; users know both by heart.
constexpr std::array kMapMenuItems{
    MenuItem{Open, u"Select"},
    MenuItem{Item, u"All Tubes", SelectAllTubes},
    MenuItem{Item, u"All Symbols", SelectAllSymbols},
    MenuItem{Item, u"Symbol", SelectSymbol},
    MenuItem{Item, u"Section", SelectSection},
    MenuItem{Item, u"Group", SelectGroup},
    MenuItem{Item, u"Row", SelectRow},
    MenuItem{Item, u"Open Tubes", SelectOpenTubes},
    MenuItem{Item, u"Periph", SelectPeriph},
    MenuItem{Close},
    MenuItem{Open, u"Deselect"},
    MenuItem{Item, u"All Tubes", DeselectAllTubes},
    MenuItem{Item, u"All Symbols", DeselectAllSymbols},
    MenuItem{Item, u"Symbol", DeselectSymbol},
    MenuItem{Item, u"Open Tubes", DeselectOpenTubes},
    MenuItem{Item, u"Section", DeselectSection},
    MenuItem{Item, u"Group", DeselectGroup},
    MenuItem{Item, u"Row", DeselectRow},
    MenuItem{Item, u"Periph", DeselectPeriph},
    MenuItem{Close},
    MenuItem{Separator},
    MenuItem{Item, u"Repairs ...", Repairs},
    MenuItem{End},
};

constexpr std::array kLegendMenuItems{
    MenuItem{Item, u"Ignore Section", IgnoreSection},
    MenuItem{End},
};

constexpr std::array kToolButtonItems{
    ToolButton{u"HEADER", u"headerButton", When::Project, u"Edit the header printed above the map"},
    ToolButton{u"OPTIONS", u"optionsButton", When::Project, u"Set colours, margins, tick sizes and macros"},
    ToolButton{u" SQL ", u"sqlButton", When::Later, u"Write and run queries over the inspection results"},
    ToolButton{u"PLANS", u"plansButton", When::Later, u"Store the legend as an inspection plan, or load one"},
    ToolButton{u"UPDATE", u"updateButton", When::Entries, u"Compute every entry of the legend anew, in order"},
};

/// Accelerators of items whose texts name none.
struct CommandKeys
{
    int command;
    const char16_t *keys;
};
constexpr std::array kCommandKeys{
    CommandKeys{SelectAllTubes, u"Ctrl+A"},
    CommandKeys{Exit, u"Ctrl+Q"},
};

struct FillButton
{
    const char16_t *key;
    When when;
    const char16_t *tip;
};
constexpr std::array kFillButtons{
    FillButton{u"RAND FILL", When::Project, u"Mark a random sample of the tubes"},
    FillButton{u"QUERY", When::Later, u"Mark the tubes that a query returns"},
    FillButton{u"LIST FILL", When::Later, u"Mark the tubes of a list"},
    FillButton{u"BOX", When::Project, u"Mark the tubes around the selected ones"},
    FillButton{u"PATTERN", When::Project, u"Mark a regular pattern of rows and columns"},
};

const FillButton *fillButton(QStringView key)
{
    const auto found = std::find_if(kFillButtons.begin(), kFillButtons.end(),
                                    [key](const FillButton &button) { return key == QStringView(button.key); });
    return found == kFillButtons.end() ? nullptr : &*found;
}

constexpr std::array kExtraItems{
    ExtraInfo{Extra::Redo, Scope::Window, u"redo", u"Redo", u"Ctrl+Y|Ctrl+Shift+Z", When::Redo,
              u"Make the change again that was taken back last"},
    ExtraInfo{Extra::ZoomIn, Scope::Window, u"zoomIn", u"Zoom In", u"Ctrl++|Ctrl+=", When::Project,
              u"Show the map larger"},
    ExtraInfo{Extra::ZoomOut, Scope::Window, u"zoomOut", u"Zoom Out", u"Ctrl+-", When::Project,
              u"Show the map smaller"},
    ExtraInfo{Extra::ZoomFit, Scope::Window, u"zoomFit", u"Fit", u"Ctrl+0", When::Project, u"Show the whole map"},
    ExtraInfo{Extra::PreviousView, Scope::Window, u"previousView", u"Previous View", u"Ctrl+[", When::Project,
              u"Show the part of the map shown before"},
    ExtraInfo{Extra::NextView, Scope::Window, u"nextView", u"Next View", u"Ctrl+]", When::Project,
              u"Show the part of the map shown after this one"},
    ExtraInfo{Extra::FindTube, Scope::Window, u"findTube", u"Find Tube", u"Ctrl+F", When::Project,
              u"Type a tube's address to show and select it"},
    ExtraInfo{Extra::Changes, Scope::Window, u"changesList", u"Changes", u"Ctrl+H|Ctrl+Alt+Z", When::Project,
              u"List the changes of the map, to go back or forth to one of them"},
    ExtraInfo{Extra::NextPart, Scope::Window, u"nextPart", u"Next Part", u"F6", When::Project,
              u"Go on to the next part of the window: map, legend, tool bar, find field"},
    ExtraInfo{Extra::EntryEdit, Scope::Legend, u"entryEdit", u"Edit ...", nullptr, When::Entries,
              u"Open the current entry in the dialog it was made with (Return, or double click)"},
    ExtraInfo{Extra::EntrySymbol, Scope::Side, u"entrySymbol", u"Symbol ...", u"Alt+S", When::Entries,
              u"Choose symbol and colour of the current entry; a click on its symbol does the same"},
    ExtraInfo{Extra::EntryRename, Scope::Legend, u"entryRename", u"Rename", u"F2", When::Entries,
              u"Type another description for the current entry; an empty one brings its own back"},
    ExtraInfo{Extra::EntryUp, Scope::Legend, u"entryUp", u"Move Up", u"Alt+Up", When::Entries,
              u"Move the current entry up; entries further down are painted over those above"},
    ExtraInfo{Extra::EntryDown, Scope::Legend, u"entryDown", u"Move Down", u"Alt+Down", When::Entries,
              u"Move the current entry down; entries further down are painted over those above"},
    ExtraInfo{Extra::EntrySolo, Scope::Side, u"entrySolo", u"Show Only This", u"Alt+1", When::Entries,
              u"Hide every entry but the current one"},
    ExtraInfo{Extra::EntriesAll, Scope::Side, u"entriesAll", u"Show All", u"Alt+A", When::Entries, u"Show every entry"},
    ExtraInfo{Extra::EntriesInvert, Scope::Side, u"entriesInvert", u"Swap Shown and Hidden", u"Alt+I", When::Entries,
              u"Show the hidden entries and hide the shown ones"},
    ExtraInfo{Extra::EntryDelete, Scope::Legend, u"entryDelete", u"Delete", u"Del", When::Entries,
              u"Delete the current entry"},
    ExtraInfo{Extra::EntrySelect, Scope::Menu, u"entrySelect", u"Select Tubes", nullptr, When::Entries,
              u"Select the tubes that the entry marks"},
    ExtraInfo{Extra::CopyTubes, Scope::Window, u"copyTubes", u"Copy Tubes", u"Ctrl+C", When::Project,
              u"Copy tubes as text for spreadsheets: in the legend those of the current entry, else the selected ones, "
              u"and without a selection all with a symbol"},
    ExtraInfo{Extra::Keys, Scope::Window, u"keys", u"&Keys", u"F1", When::Always, u"List the keys of this window"},
};

} // namespace

const std::span<const MenuItem> kMenuBar(kMenuBarItems);
const std::span<const MenuItem> kMapMenu(kMapMenuItems);
const std::span<const MenuItem> kLegendMenu(kLegendMenuItems);
const std::span<const ToolButton> kToolButtons(kToolButtonItems);
const std::span<const ExtraInfo> kExtras(kExtraItems);

QString menuKeys(const MenuItem &item)
{
    if (item.kind != MenuItem::Item)
        return {};
    const auto found = std::find_if(kCommandKeys.begin(), kCommandKeys.end(),
                                    [&item](const CommandKeys &keys) { return keys.command == item.command; });
    return found == kCommandKeys.end() ? QString::fromUtf16(item.text).section(u'\t', 1)
                                       : QString::fromUtf16(found->keys);
}

const char16_t *fillButtonTip(QStringView key)
{
    const FillButton *button = fillButton(key);
    return button ? button->tip : u"";
}

When fillButtonWhen(QStringView key)
{
    const FillButton *button = fillButton(key);
    return button ? button->when : When::Later;
}

const ExtraInfo &extraInfo(Extra extra)
{
    return *std::find_if(kExtraItems.begin(), kExtraItems.end(),
                         [extra](const ExtraInfo &e) { return e.extra == extra; });
}

} // namespace app

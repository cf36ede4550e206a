#include "SqlCommands.h"

namespace query {

using tarnwick::CommandLayout;
using tarnwick::commandList;
using tarnwick::CommandRow;
using tarnwick::kAlways;
using tarnwick::kCloseMenu;
using tarnwick::kEndOfMenu;
using tarnwick::kSeparator;
using tarnwick::MenuItem;
using tarnwick::menuItem;
using tarnwick::openMenu;
using tarnwick::placeholder;

namespace {

constexpr CommandRow namedList(int first, int last, const char16_t *tip, const char16_t *name)
{
    CommandRow row = commandList(first, last, tip);
    row.name = name;
    return row;
}

constexpr CommandRow namedPlaceholder(int id, int list, const char16_t *text, const char16_t *tip, const char16_t *name)
{
    CommandRow row = placeholder(id, list, text, tip);
    row.name = name;
    return row;
}

} // namespace

static constexpr CommandRow kRows[] = {
    {NewQuery, u"&New ...", u"Begin a new query", Full, u"Ctrl+N"},
    {OpenQuery, u"&Open ...", u"Open a query file of the project", kAlways, u"Ctrl+O"},
    {SaveQuery, u"&Save", u"Save the query to its file", kAlways, u"Ctrl+S"},
    {SaveQueryAs, u"Save &As ...", u"Save the query to another file of the project", Full},
    {ImportQuery, u"&Import Query ...", u"Copy a query file into the project, and open it", Full},
    {ExportQuery, u"&Export Query ...", u"Write a copy of the query for other projects", Full},
    commandList(FirstRecentQuery, LastRecentQuery, u"Open this query file"),
    placeholder(NoRecentQuery, FirstRecentQuery, u"<None>", u"No query file was executed yet"),
    {PrintResult, u"&Print ...\tCtrl+P", u"Print all rows of the result"},
    {PrintCurrentPage, u"Print Current Page ...", u"Print the rows of the result that are in sight"},
    {ClearQuery, u"&Clear", u"Empty the text; Back brings it back if it was executed"},
    {EditDisplayFormats, u"&Display Formats ...", u"Set titles, widths and formats of the columns of results"},
    {EditSqlOptions, u"&Options ...", u"Set sizes, margins and quick-launch buttons of this editor"},
    {ForwardVersion, u"&Forward\tCtrl+F", u"Show the next text that was executed", Versions},
    {BackVersion, u"&Back\tCtrl+B", u"Show the text that was executed before", Versions},
    {ClearRecentQueries, u"Clear Recent Queries ...", u"Empty the list of recent queries"},
    {ShowTables, u"&Tables ...", u"Show the tables of the database with their fields and indexes"},
    {StoreQuery, u"&Store Query", u"Store the query in the database under its name", Full},
    {StoreQueryAs, u"Store Query &As ...", u"Store the query in the database under another name", Full},
    {DeleteQuery, u"Delete Query ...", u"Delete the query from the database", Full},
    {ExportResults, u"&Export Results ...", u"Write the rows of the result to a text, CSV or spreadsheet file"},
    {MarkOnMap, u"&Mark on map", u"Make a query fill of the rows as they are shown", HasMap, nullptr, u"markOnMap"},
    {SelectOnMap, u"Select &Tubes on Map\tCtrl+T", u"Select the tubes of the marked rows on the map", HasMap, nullptr,
     u"selectOnMap"},
    {FindSelectedTubes, u"Find Map's Selectio&n\tCtrl+Shift+T",
     u"Mark the rows of the tubes that are selected on the map", HasMap, nullptr, u"findSelectedTubes"},
    {ViewExport, u"&View Export ...", u"Open an exported file in the system's text editor"},
    {ExecuteQuery, u"E&xecute\tF5", u"Execute the query", kAlways, u"Ctrl+Return|Ctrl+Enter", u"execute"},
    {ExecuteSelection, u"Execute Se&lection\tF9", u"Execute only the selected text", HasSelection, nullptr,
     u"executeSelection"},
    {FindText, u"F&ind and Replace ...\tCtrl+Shift+F", u"Find and replace in the text", kAlways, nullptr, u"findText",
     CommandRow::KeysNeedFocus, kTextPart},
    {ExplainStatements, u"E&xplain ...\tShift+F5",
     u"Tell in words what the text, or the selected part of it, reads, and what would make it faster", HasText, nullptr,
     u"explainStatements"},
    {NextPart, u"Next &Part\tF6", u"Go from the text to the result, or back", kAlways, nullptr, u"nextPart"},
    {FindNextText, u"Find &Next\tF3", u"Find the next occurrence in the text", kAlways, nullptr, u"findNextText",
     CommandRow::KeysNeedFocus, kTextPart},
    {FormatStatements, u"For&mat Statement", u"Write the text in the standard form, each clause on its own line",
     HasText, nullptr, u"formatStatements"},
    {PreviewResult, u"Print P&review ...", u"Show the pages of the result as they are printed", kAlways, nullptr,
     u"previewResult"},
    namedList(FirstFormerText, LastFormerText, u"Bring this former text of the query back", u"formerText"),
    namedPlaceholder(NoFormerText, FirstFormerText, u"<None>", u"The query was not stored over yet", u"noFormerText"),
};

static constexpr MenuItem kBar[] = {
    openMenu(u"&File"),
    menuItem(NewQuery),
    menuItem(OpenQuery),
    kSeparator,
    menuItem(SaveQuery),
    menuItem(SaveQueryAs),
    kSeparator,
    menuItem(ImportQuery),
    menuItem(ExportQuery),
    kSeparator,
    menuItem(PrintResult),
    menuItem(PrintCurrentPage),
    kSeparator,
    openMenu(u"Recent Queries"),
    menuItem(NoRecentQuery),
    menuItem(FirstRecentQuery),
    kCloseMenu,
    kCloseMenu,
    openMenu(u"&Edit"),
    menuItem(ClearQuery),
    kSeparator,
    menuItem(BackVersion),
    menuItem(ForwardVersion),
    kSeparator,
    menuItem(EditSqlOptions),
    menuItem(EditDisplayFormats),
    kSeparator,
    menuItem(ClearRecentQueries),
    kSeparator,
    menuItem(FindText),
    menuItem(FindNextText),
    menuItem(FormatStatements),
    kCloseMenu,
    openMenu(u"&View"),
    menuItem(ShowTables),
    menuItem(ExplainStatements),
    kSeparator,
    menuItem(NextPart),
    kCloseMenu,
    openMenu(u"&Database"),
    menuItem(StoreQuery),
    menuItem(StoreQueryAs),
    kSeparator,
    menuItem(DeleteQuery),
    kSeparator,
    openMenu(u"Former Texts"),
    menuItem(NoFormerText),
    menuItem(FirstFormerText),
    kCloseMenu,
    kCloseMenu,
    openMenu(u"&Util"),
    menuItem(ExportResults),
    menuItem(ViewExport),
    kSeparator,
    menuItem(MarkOnMap),
    menuItem(SelectOnMap),
    menuItem(FindSelectedTubes),
    kSeparator,
    menuItem(ExecuteQuery),
    menuItem(ExecuteSelection),
    menuItem(PreviewResult),
    kCloseMenu,
    kEndOfMenu,
};
static constexpr CommandLayout kLayouts[] = {{CommandLayout::Kind::MenuBar, u"menuBar", kBar}};
static constexpr tarnwick::CommandTable kTable(kRows, kLayouts);

const tarnwick::CommandTable &sqlCommands()
{
    return kTable;
}

} // namespace query

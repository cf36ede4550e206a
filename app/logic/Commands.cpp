#include "Commands.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr std::array kCommands{
    CommandInfo{NewMap, When::Project, u"Start an empty map"},
    CommandInfo{OpenMap, When::Project, u"Open a map file of the project"},
    CommandInfo{SaveMap, When::Project, u"Save the map to its file"},
    CommandInfo{SaveMapAs, When::Project, u"Save the map to another file"},
    CommandInfo{ImportMap, When::Project, u"Copy a map template of the user folder into the project and open it"},
    CommandInfo{ExportMap, When::Project, u"Store this map as a template in the user folder"},
    CommandInfo{PrintSetup, When::Project, u"Choose printer, paper and orientation"},
    CommandInfo{PrintPreview, When::Project, u"Show the map as it will be printed"},
    CommandInfo{Print, When::Project, u"Print the map with its legend and header"},
    CommandInfo{StoreMetafile, When::Project, u"Store a picture of the map for office programs"},
    CommandInfo{StoreBitmap, When::Project, u"Store a picture of the map as a bitmap"},
    CommandInfo{NoRecentProject, When::Project, u"No project has been opened yet"},
    CommandInfo{FirstRecentProject, When::Always, u"Open this project"},
    CommandInfo{NoRecentDatabase, When::Project, u"No database has been connected yet"},
    CommandInfo{FirstRecentDatabase, When::Project, u"Connect to this database"},
    CommandInfo{NoRecentMap, When::Project, u"No map has been opened yet"},
    CommandInfo{FirstRecentMap, When::Project, u"Open this map"},
    CommandInfo{Exit, When::Always, u"Close the database and leave the program"},
    CommandInfo{Undo, When::Undo, u"Take the last change of the map back"},
    CommandInfo{SelectAllTubes, When::Project, u"Select every tube"},
    CommandInfo{SelectAllSymbols, When::Project, u"Select every tube that carries a symbol"},
    CommandInfo{SelectSymbol, When::PointedSymbol, u"Select every tube with the symbol of the tube pointed at"},
    CommandInfo{SelectOpenTubes, When::Project, u"Select every tube without a symbol"},
    CommandInfo{SelectSection, When::PointedSection, u"Select the section of the tube pointed at"},
    CommandInfo{SelectGroup, When::PointedTube,
                u"Select the tubes that hang together with the tube pointed at and look like it"},
    CommandInfo{SelectRow, When::PointedTube, u"Select the row of the tube pointed at"},
    CommandInfo{SelectPeriph, When::Project, u"Select the tubes on the edge of the bundle"},
    CommandInfo{DeselectAllTubes, When::Project, u"Clear the whole selection"},
    CommandInfo{DeselectAllSymbols, When::Project, u"Take every tube that carries a symbol out of the selection"},
    CommandInfo{DeselectSymbol, When::PointedSymbol,
                u"Take every tube with the symbol of the tube pointed at out of the selection"},
    CommandInfo{DeselectOpenTubes, When::Project, u"Take every tube without a symbol out of the selection"},
    CommandInfo{DeselectSection, When::PointedSection, u"Take the section of the tube pointed at out of the selection"},
    CommandInfo{DeselectGroup, When::PointedTube,
                u"Take the tubes that hang together with the tube pointed at and look like it out of the selection"},
    CommandInfo{DeselectRow, When::PointedTube, u"Take the row of the tube pointed at out of the selection"},
    CommandInfo{DeselectPeriph, When::Project, u"Take the tubes on the edge of the bundle out of the selection"},
    CommandInfo{DeleteAllEntries, When::Entries, u"Delete every entry of the legend"},
    CommandInfo{Repairs, When::Later, u"Show the repairs of the selected tubes"},
    CommandInfo{OpenProject, When::Always, u"Open the project of a folder in place of this one"},
    CommandInfo{ClearRecentProjects, When::Project, u"Forget the projects that were opened"},
    CommandInfo{MapFullScreen, When::Project, u"Show the map alone on the whole screen, and go back"},
    CommandInfo{FlipHorizontal, When::Project, u"Show the map mirrored from left to right"},
    CommandInfo{FlipVertical, When::Project, u"Show the map mirrored from top to bottom"},
    CommandInfo{ShowFloatingId, When::Project, u"Show the tube under the pointer beside it"},
    CommandInfo{NewDatabase, When::Project, u"Create an empty database and connect to it"},
    CommandInfo{OpenDatabase, When::Project, u"Connect to another database"},
    CommandInfo{CloseDatabase, When::Project, u"Close the connection to the database"},
    CommandInfo{CreateHistory, When::Later, u"Create history files of past outages"},
    CommandInfo{UploadReports, When::Later, u"Upload analysts' reports into the database"},
    CommandInfo{UploadComponent, When::Project, u"Store the tubes and landmarks of the component in the database"},
    CommandInfo{ClearRecentDatabases, When::Project, u"Forget the databases that were connected"},
    CommandInfo{ClearRecentMaps, When::Project, u"Forget the maps that were opened"},
    CommandInfo{IgnoreSection, When::Sections, u"Let the entry mark its rows and columns in every section"},
    CommandInfo{AdministrationTool, When::Project, u"Start the suite's administration tool"},
    CommandInfo{ComponentMaker, When::Project, u"Start the suite's component maker"},
    CommandInfo{ConvertReports, When::Later, u"Convert text reports of other systems into report files"},
    CommandInfo{DesktopShortcut, When::Project, u"Put a shortcut to this program on the desktop"},
    CommandInfo{ProjectInfo, When::Project, u"Show site, component, outages and files of the project"},
    CommandInfo{About, When::Always, u"Show the program's name and revision"},
};

int tableNumber(int number)
{
    if (number >= FirstRecentProject && number <= LastRecentProject)
        return FirstRecentProject;
    if (number >= FirstRecentDatabase && number <= LastRecentDatabase)
        return FirstRecentDatabase;
    if (number >= FirstRecentMap && number <= LastRecentMap)
        return FirstRecentMap;
    return number;
}

QString reason(When when, const CommandContext &context)
{
    if (when == When::Later)
        return u"Comes with a later version."_s;
    if (when != When::Always && !context.hasProject)
        return u"Open a project first."_s;
    switch (when) {
    case When::Sections:
        return u"The component has no sections."_s;
    case When::Entries:
        return u"The legend has no entries."_s;
    case When::Undo:
        return u"There is no change to take back."_s;
    case When::Redo:
        return u"There is no change to make again."_s;
    case When::PointedTube:
        return u"There is no tube under the pointer."_s;
    case When::PointedSymbol:
        return u"There is no tube with a symbol under the pointer."_s;
    case When::PointedSection:
        return context.hasSections ? u"There is no tube under the pointer."_s : u"The component has no sections."_s;
    default:
        return {};
    }
}

} // namespace

const CommandInfo *commandInfo(int number)
{
    const int wanted = tableNumber(number);
    const auto found =
        std::find_if(kCommands.begin(), kCommands.end(), [wanted](const CommandInfo &c) { return c.number == wanted; });
    return found == kCommands.end() ? nullptr : &*found;
}

bool isEnabled(When when, const CommandContext &context)
{
    switch (when) {
    case When::Always:
        return true;
    case When::Project:
        return context.hasProject;
    case When::Sections:
        return context.hasProject && context.hasSections;
    case When::Entries:
        return context.hasProject && context.hasEntries;
    case When::Undo:
        return context.hasProject && context.canUndo;
    case When::Redo:
        return context.hasProject && context.canRedo;
    case When::PointedTube:
        return context.hasProject && context.hasPointedTube;
    case When::PointedSymbol:
        return context.hasProject && context.hasPointedTube && context.pointedTubeHasSymbol;
    case When::PointedSection:
        return context.hasProject && context.hasPointedTube && context.hasSections;
    case When::Later:
        return false;
    }
    return false;
}

QString tipText(const char16_t *tip, When when, const CommandContext &context)
{
    const QString text = QString::fromUtf16(tip);
    return isEnabled(when, context) ? text : QString(text + u'\n' + reason(when, context));
}

} // namespace app

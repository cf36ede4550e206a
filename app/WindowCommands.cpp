#include "WindowCommands.h"

#include "FileDialogs.h"
#include "HeaderDlg.h"
#include "LineIcon.h"
#include "RecentMenus.h"

#include <app/logic/DesktopShortcut.h>
#include <app/logic/Messages.h>
#include <app/logic/SelectionCommands.h>
#include <app/logic/SiblingTools.h>

#include <map/MapUpdate.h>
#include <tarnwick/FileWriter.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace app {

namespace {

/// Keeps the program's picture where a desktop finds it. Its path; empty when it cannot be stored, and a shortcut does
/// without.
QString storeIcon(const QString &installation)
{
    constexpr int kSide = 256;
    const QString path = QDir(installation).filePath(u"config/arvo/arvo.png"_s);
    QByteArray picture;
    QBuffer buffer(&picture);
    buffer.open(QIODevice::WriteOnly);
    programIcon().pixmap(kSide).save(&buffer, "PNG");
    try {
        tarnwick::writeFileAtomically(path, picture);
    } catch (const tarnwick::Error &) {
        return QFileInfo::exists(path) ? path : QString();
    }
    return path;
}

} // namespace

WindowCommands::WindowCommands(ProjectSession &session, brannock::TubesheetMap &map, RecentMenus &recent,
                               QWidget *parent)
    : m_session(session)
    , m_map(map)
    , m_recent(recent)
    , m_parent(parent)
    , m_legend(session.map(), session.fillRunner())
    , m_files(session)
    , m_printing(session, parent)
{
}

void WindowCommands::setFileDialogs(FileDialogs *dialogs)
{
    m_dialogs = dialogs;
    m_files.setFileChoice(dialogs);
    m_printing.setFileChoice(dialogs);
}

void WindowCommands::run(int command)
{
    if (isSelectionCommand(command))
        select(command);
    else if (!runFile(command) && !runMap(command) && !runDatabase(command) && !runProject(command))
        runProgram(command);
}

bool WindowCommands::runFile(int command)
{
    if (command >= FirstRecentMap && command <= LastRecentMap) {
        m_files.open(m_recent.path(command));
        return true;
    }
    switch (command) {
    case NewMap:
        m_files.newMap();
        return true;
    case OpenMap:
        m_files.open();
        return true;
    case SaveMap:
        m_files.save();
        return true;
    case SaveMapAs:
        m_files.saveAs();
        return true;
    case ImportMap:
        m_files.importMap();
        return true;
    case ExportMap:
        m_files.exportMap();
        return true;
    case PrintSetup:
        m_printing.setUp();
        return true;
    case PrintPreview:
        m_printing.preview();
        return true;
    case Print:
        m_printing.print();
        return true;
    case StoreMetafile:
        m_printing.storeMetafile();
        return true;
    case StoreBitmap:
        m_printing.storeBitmap();
        return true;
    default:
        return false;
    }
}

void WindowCommands::editHeader()
{
    HeaderEditor editor({m_session.map(), m_session.prompts(), *m_dialogs, m_session.roots(),
                         [this] { return m_session.printMacros(); }});
    if (m_session.headerDraft) { // of a dialog that a crash ended
        editor.header = m_session.headerDraft->header;
        editor.description = m_session.headerDraft->description;
    }
    editor.edited = [this, &editor] {
        m_session.headerDraft.reset();
        if (editor.isModified())
            m_session.headerDraft = HeaderDraft{editor.header, editor.description};
        Q_EMIT workChanged();
    };
    HeaderDlg dialog(
        editor, [this](const map::MapHeader &header) { return m_printing.page(header); }, m_printing.paperSize(),
        m_printing.resolution(), m_parent);
    dialog.exec();
    m_session.headerDraft.reset();
}

bool WindowCommands::runMap(int command)
{
    switch (command) {
    case Undo:
        undo();
        return true;
    case DeleteAllEntries:
        m_legend.removeAll();
        return true;
    case IgnoreSection:
        if (pointedEntry >= 0 && pointedEntry < m_session.map().count())
            m_legend.setAllSections(pointedEntry, !m_session.map().entry(pointedEntry).allSections);
        return true;
    case MapFullScreen:
        Q_EMIT fullScreenWanted();
        return true;
    case FlipHorizontal:
    case FlipVertical:
        flip(command);
        return true;
    case ShowFloatingId:
        m_map.setTubeTip(!m_map.hasTubeTip());
        return true;
    default:
        return false;
    }
}

void WindowCommands::undo()
{
    const QString label = m_session.map().undoLabel();
    m_session.map().undo();
    m_session.prompts().status(messages::kUndone, label);
}

void WindowCommands::redo()
{
    const QString label = m_session.map().redoLabel();
    m_session.map().redo();
    m_session.prompts().status(messages::kRedone, label);
}

void WindowCommands::moveTo(int position)
{
    const int steps = position - m_session.map().history().position();
    if (steps == -1)
        return undo();
    if (steps == 1)
        return redo();
    m_session.map().moveTo(position);
    if (steps != 0)
        m_session.prompts().status(steps < 0 ? messages::kUndoneSeveral : messages::kRedoneSeveral, std::abs(steps));
}

void WindowCommands::select(int command)
{
    map::MapDocument &document = m_session.map();
    const QList<qint32> selection = selectionAfter(command, document.component(), document.tubes(), pointedTube);
    document.change(selectionLabel(command), [&selection](map::MapEdit &edit) { edit.setSelection(selection); });
}

void WindowCommands::flip(int command)
{
    const bool horizontal = command == FlipHorizontal;
    m_session.map().change(horizontal ? u"Flip Horizontal"_s : u"Flip Vertical"_s, [horizontal](map::MapEdit &edit) {
        const int x = edit.state().xOrientation;
        const int y = edit.state().yOrientation;
        edit.setOrientation(horizontal ? -x : x, horizontal ? y : -y);
    });
}

void WindowCommands::updateMap()
{
    map::MapUpdate update(m_session.map(), m_session.fillRunner());
    if (!update.confirm())
        return;
    std::unique_ptr<tarnwick::Progress> progress = m_session.newProgress(u"Update Map"_s);
    if (!update.run(progress.get()))
        return;
    progress.reset();
    update.tell();
}

bool WindowCommands::runDatabase(int command)
{
    if (command >= FirstRecentDatabase && command <= LastRecentDatabase) {
        m_session.connectDatabase(m_recent.path(command));
        return true;
    }
    switch (command) {
    case NewDatabase:
        newDatabase();
        return true;
    case OpenDatabase:
        openDatabase();
        return true;
    case CloseDatabase:
        if (db::checkConnected(m_session.database())) {
            m_session.prompts().status(messages::kDisconnectDatabase);
            m_session.closeDatabase();
        }
        return true;
    case UploadComponent:
        m_session.uploadComponent();
        return true;
    case ClearRecentDatabases:
        m_session.clearRecentDatabases();
        return true;
    case ClearRecentMaps:
        m_session.clearRecentMaps();
        return true;
    default:
        return false;
    }
}

void WindowCommands::newDatabase()
{
    m_session.prompts().status(messages::kCreateDatabase);
    const QString path = m_dialogs->newFile(kDatabaseChooser, u"New Database"_s, m_session.roots());
    if (!path.isEmpty())
        m_session.createDatabase(path);
}

void WindowCommands::openDatabase()
{
    m_session.prompts().status(messages::kConnectDatabase);
    const QString path = m_dialogs->openFile(kDatabaseChooser, u"Open Database"_s, m_session.roots());
    if (!path.isEmpty())
        m_session.connectDatabase(path);
}

bool WindowCommands::runProject(int command)
{
    if (command >= FirstRecentProject && command <= LastRecentProject) {
        openProjectFolder(m_recent.path(command));
        return true;
    }
    switch (command) {
    case OpenProject:
        openProject();
        return true;
    case ClearRecentProjects:
        if (confirmClear())
            m_session.clearRecentProjects();
        return true;
    case ProjectInfo:
        Q_EMIT projectInfoWanted();
        return true;
    default:
        return false;
    }
}

void WindowCommands::openProject()
{
    const QString start = m_session.hasProject() ? QFileInfo(m_session.project().folder).absolutePath()
                                                 : QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
    const QString folder = m_dialogs->openFolder(u"Open Project"_s, start);
    if (!folder.isEmpty())
        openProjectFolder(folder);
}

void WindowCommands::openProjectFolder(const QString &folder)
{
    if (mayReplaceMap())
        Q_EMIT projectWanted(folder);
}

bool WindowCommands::confirmClear()
{
    return m_session.prompts().question(tarnwick::Buttons::YesNo, messages::kAskClearRecent) == tarnwick::Answer::Yes;
}

bool WindowCommands::runProgram(int command)
{
    switch (command) {
    case Exit:
        Q_EMIT closeWanted();
        return true;
    case About:
        Q_EMIT aboutWanted();
        return true;
    case AdministrationTool:
        startTool(kAdministrationTool, m_session.roots(), m_session.prompts());
        return true;
    case ComponentMaker:
        startComponentMaker();
        return true;
    case DesktopShortcut:
        createShortcut();
        return true;
    default:
        return false;
    }
}

void WindowCommands::startComponentMaker()
{
    std::unique_ptr<tarnwick::Progress> progress = m_session.newProgress(u"Component Maker"_s);
    if (!runTool(kComponentMaker, m_session.roots(), m_session.prompts(), progress.get()))
        return;
    progress.reset();
    if (const int dropped = m_session.reloadComponent(); dropped > 0)
        m_session.prompts().information(messages::kSymbolsDeleted, dropped);
}

void WindowCommands::createShortcut()
{
    try {
        const QString installation = m_session.roots().palomineDir;
        const ShortcutTarget target{QCoreApplication::applicationFilePath(),
                                    qEnvironmentVariableIsEmpty("PALOMINE_DIR") ? QString() : installation,
                                    storeIcon(installation)};
        const QString path =
            createDesktopShortcut(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation), target);
        m_session.prompts().status(messages::kShortcutCreated, QDir::toNativeSeparators(path));
    } catch (const tarnwick::Error &error) {
        m_session.prompts().error(messages::kShortcutFailed, error.text());
    }
}

} // namespace app

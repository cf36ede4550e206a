#include "WindowCommands.h"

#include "HeaderDlg.h"
#include "LineIcon.h"

#include <app/logic/DesktopShortcut.h>
#include <app/logic/Messages.h>
#include <app/logic/RecentLists.h>
#include <app/logic/SelectionCommands.h>
#include <app/logic/SiblingTools.h>
#include <app/logic/WindowCommandTable.h>

#include <map/HeaderEditor.h>
#include <map/MapUpdate.h>
#include <tarnwick/Failures.h>
#include <tarnwick/FileWriter.h>
#include <tarnwick/gui/FileDialogs.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>
#include <QStandardPaths>

using namespace Qt::StringLiterals;
using tarnwick::CommandHandlers;

namespace app {

namespace {

/// Stores the icon of the program for the desktop. Returns its path; empty if it cannot be stored, and the shortcut
/// then has no icon.
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

WindowCommands::WindowCommands(ProjectSession &session, QWidget *parent)
    : m_session(session)
    , m_parent(parent)
    , m_legend(session.map(), session.fillRunner())
    , m_files(session)
    , m_printing(session, parent)
{
}

void WindowCommands::setFileDialogs(tarnwick::FileDialogs *dialogs)
{
    m_dialogs = dialogs;
    m_files.setFileChoice(dialogs);
    m_printing.setFileChoice(dialogs);
}

void WindowCommands::bind(CommandHandlers &handlers)
{
    bindFiles(handlers);
    bindMap(handlers);
    bindDatabase(handlers);
    bindProgram(handlers);
}

void WindowCommands::bindFiles(CommandHandlers &handlers)
{
    handlers.bind(NewMap, [this] { m_files.newMap(); });
    handlers.bind(OpenMap, [this] { m_files.open(); });
    handlers.bind(SaveMap, [this] { m_files.save(); });
    handlers.bind(SaveMapAs, [this] { m_files.saveAs(); });
    handlers.bind(ImportMap, [this] { m_files.importMap(); });
    handlers.bind(ExportMap, [this] { m_files.exportMap(); });
    handlers.bind(PrintSetup, [this] { m_printing.setUp(); });
    handlers.bind(PrintPreview, [this] { m_printing.preview(); });
    handlers.bind(Print, [this] { m_printing.print(); });
    handlers.bind(StoreMetafile, [this] { m_printing.storeMetafile(); });
    handlers.bind(StoreBitmap, [this] { m_printing.storeBitmap(); });
    handlers.bindList(
        FirstRecentMap, [this](const auto &map) { m_files.open(map.value); },
        [this] { return recentMapEntries(m_session); });
    handlers.bind(ClearRecentMaps, [this] { m_session.clearRecentMaps(); });
    handlers.bind(EditMapHeader, [this] { editHeader(); });
}

void WindowCommands::bindMap(CommandHandlers &handlers)
{
    handlers.bind(Undo, [this] { undo(); });
    handlers.setText(Undo, [this] {
        // A name can contain "&", which would mark a key in a menu.
        const QString label = m_session.map().undoLabel().replace(u'&', u"&&"_s);
        return label.isEmpty() ? u"Undo"_s : tarnwick::format(u"Undo %S", label);
    });
    handlers.bind(Redo, [this] { redo(); });
    for (int command = SelectAllTubes; command <= DeselectPeriph; ++command)
        handlers.bind(command, [this, command] { select(command); });
    handlers.bindCheckable(
        IgnoreSection, [this] { ignoreSection(); },
        [this] {
            return pointedEntry >= 0 && pointedEntry < m_session.map().count() &&
                   m_session.map().entry(pointedEntry).allSections;
        });
    handlers.bindCheckable(
        FlipHorizontal, [this] { flip(FlipHorizontal); },
        [this] { return m_session.map().state().xOrientation == -1; });
    handlers.bindCheckable(
        FlipVertical, [this] { flip(FlipVertical); }, [this] { return m_session.map().state().yOrientation == -1; });
    handlers.bind(UpdateMap, [this] { updateMap(); });
}

void WindowCommands::bindDatabase(CommandHandlers &handlers)
{
    handlers.bind(NewDatabase, [this] { newDatabase(); });
    handlers.bind(OpenDatabase, [this] { openDatabase(); });
    handlers.bind(CloseDatabase, [this] { closeDatabase(); });
    handlers.bind(UploadComponent, [this] { m_session.uploadComponent(); });
    handlers.bindList(
        FirstRecentDatabase, [this](const auto &database) { m_session.connectDatabase(database.value); },
        [this] { return recentDatabaseEntries(m_session); });
    handlers.bind(ClearRecentDatabases, [this] { m_session.clearRecentDatabases(); });
}

void WindowCommands::bindProgram(CommandHandlers &handlers)
{
    handlers.bind(AdministrationTool,
                  [this] { startTool(kAdministrationTool, m_session.roots(), m_session.prompts()); });
    handlers.bind(ComponentMaker, [this] { startComponentMaker(); });
    handlers.bind(DesktopShortcut, [this] { createShortcut(); });
}

void WindowCommands::editHeader()
{
    map::HeaderEditor editor({m_session.map(), m_session.prompts(), *m_dialogs, m_session.roots(),
                              [this] { return m_session.printMacros(); }});
    if (m_session.headerDraft) { // restored after a crash
        editor.header = m_session.headerDraft->header;
        editor.description = m_session.headerDraft->description;
    }
    editor.edited = [this, &editor] {
        m_session.headerDraft.reset();
        if (editor.isModified())
            m_session.headerDraft = map::HeaderDraft{editor.header, editor.description};
        Q_EMIT workChanged();
    };
    HeaderDlg dialog(
        editor, [this](const map::MapHeader &header) { return m_printing.page(header); }, m_printing.paperSize(),
        m_printing.resolution(), m_parent);
    dialog.exec();
    m_session.headerDraft.reset();
}

void WindowCommands::ignoreSection()
{
    if (pointedEntry >= 0 && pointedEntry < m_session.map().count())
        m_legend.setAllSections(pointedEntry, !m_session.map().entry(pointedEntry).allSections);
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
    document.change(kWindowCommands.row(command)->label(),
                    [&selection](map::MapEdit &edit) { edit.setSelection(selection); });
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
    update.report();
}

void WindowCommands::closeDatabase()
{
    if (!db::checkConnected(m_session.database()))
        return;
    m_session.prompts().status(messages::kDisconnectDatabase);
    m_session.closeDatabase();
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
    const auto create = [this] {
        const QString installation = m_session.roots().palomineDir;
        const ShortcutTarget target{QCoreApplication::applicationFilePath(),
                                    qEnvironmentVariableIsEmpty("PALOMINE_DIR") ? QString() : installation,
                                    storeIcon(installation)};
        const QString path =
            createDesktopShortcut(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation), target);
        m_session.prompts().status(messages::kShortcutCreated, QDir::toNativeSeparators(path));
    };
    tarnwick::attempt(m_session.prompts(), create, messages::kShortcutFailed);
}

} // namespace app

#include "DBase.h"

#include "CommandState.h"
#include "DialogCommands.h"
#include "FillCommands.h"
#include "FullScreen.h"
#include "LegendModel.h"
#include "LegendPart.h"
#include "LegendView.h"
#include "Look.h"
#include "MapPane.h"
#include "OptionsCommand.h"
#include "ProjectCommands.h"
#include "RecoveryKeeper.h"
#include "SidePanel.h"
#include "StartPage.h"
#include "ViewBar.h"
#include "ViewCommands.h"
#include "WindowProgress.h"
#include "WindowPrompts.h"

#include <app/logic/FileOpener.h>
#include <app/logic/StartUp.h>
#include <app/logic/WindowConditions.h>

#include <brannock/gui/TubesheetMap.h>

#include <tarnwick/gui/CommandActions.h>
#include <tarnwick/gui/DroppedFiles.h>
#include <tarnwick/gui/OnScreen.h>

#include <QCloseEvent>
#include <QDir>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QScopeGuard>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr QSize kFirstSize{1280, 800};
constexpr int kMapShare = 66; ///< of the first width, in percent

} // namespace

DBase::DBase(tarnwick::UserPrompts *prompts)
    : m_status(statusBar())
    , m_ownPrompts(prompts ? nullptr : std::make_unique<WindowPrompts>(this, m_status.line()))
    , m_prompts(prompts ? *prompts : m_ownPrompts->prompts())
    , m_session(std::make_unique<ProjectSession>(m_prompts))
    , m_notes(*m_session)
    , m_parameterDialogs(m_prompts, this)
    , m_systemDialogs(this)
    , m_runner(m_prompts, nullptr)
{
    setObjectName(u"mainWindow"_s);
    setAcceptDrops(true);
    if (!prompts) // otherwise nobody sits at the window
        m_session->queryContext().prompt = &m_parameterDialogs;
    setWindowTitle(QString::fromUtf16(kTitleAtCreation));
    makeActions();
    makeCentre();
    makeCommands();
    connectMap();
    connectSession();
    connectCommands();
    resize(tarnwick::sizeOnScreen(*this, kFirstSize));
    m_map->setOptions(m_session->options().map);
    sessionChanged();
}

DBase::~DBase()
{
    m_session->changed = nullptr;
    m_session->replaced = nullptr;
    m_session->makeProgress = nullptr;
    // The views refer to the session's map.
    m_side->legendModel().setDocument(nullptr);
    delete takeCentralWidget();
}

brannock::TubesheetMap &DBase::map()
{
    return m_map->map();
}

void DBase::makeActions()
{
    m_handlers.setConditions(
        [this](int condition) { return whyNot(condition, commandContext(*m_session, map(), *m_commands)); });
    m_handlers.setRunner([this](const tarnwick::CommandRow &row, const std::function<void()> &work) {
        using Words = CommandRunner::Words;
        m_runner.perform(work, row.isViewOnly() ? Words::Keep : Words::Forget);
    });
    m_actions = new tarnwick::CommandActions(m_handlers, this);
    m_actions->fillMenuBar(menuBar());
    m_mapMenu = m_actions->makeMenu(kMapMenu, this);
    m_legendMenu = m_actions->makeMenu(kLegendMenu, this);
}

void DBase::makeCentre()
{
    m_mainBar = new QToolBar(u"Tools"_s, this);
    m_mainBar->setMovable(false);
    m_mainBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_actions->fillToolBar(m_mainBar, kMainBar);
    m_viewBar = new ViewBar(*m_actions, this);
    addToolBar(m_mainBar);
    addToolBar(m_viewBar);
    menuBar()->setCornerWidget(m_viewBar->findField());
    m_start = new StartPage(*m_actions);
    m_map = new MapPane(m_session->map(), m_start);
    m_map->setTubeNotes([this](int tube) { return m_notes.lines(tube); });
    m_side = new SidePanel(*m_actions);
    m_side->legendModel().setDocument(&m_session->map());
    m_splitter = new QSplitter(Qt::Horizontal);
    m_splitter->setObjectName(u"mainSplitter"_s);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_map);
    m_splitter->addWidget(m_side);
    // Without stretch factors the parts keep their shares when the window is resized.
    m_splitter->setSizes({kFirstSize.width() * kMapShare / 100, kFirstSize.width() * (100 - kMapShare) / 100});
    setCentralWidget(m_splitter);
    m_fullScreen =
        new FullScreen({this, m_splitter, &map(), {m_mainBar, m_viewBar, m_side, statusBar(), m_viewBar->findField()}});
}

void DBase::makeCommands()
{
    m_recovery = new RecoveryKeeper(*m_session, m_runner, this);
    m_commands = std::make_unique<WindowCommands>(*m_session, this);
    m_projects = std::make_unique<ProjectCommands>(
        *m_session, [this] { return m_commands->mayReplaceMap(); }, this);
    m_dialogs = std::make_unique<DialogCommands>(*m_session, m_notes, this);
    m_fills = std::make_unique<FillCommands>(*m_session, *m_map, *m_side, m_dialogs->plans(), this);
    setFileDialogs(&m_systemDialogs);
    m_legend = new LegendPart(m_session->map(), m_session->fillRunner(), *m_fills, *m_side, m_runner, this);
    m_view =
        std::make_unique<ViewCommands>(*m_session, ViewCommands::Parts{*this, *m_map, *m_side, *m_mainBar, *m_viewBar,
                                                                       *m_fullScreen, *m_commands, m_runner});
    m_commands->bind(m_handlers);
    m_projects->bind(m_handlers);
    m_dialogs->bind(m_handlers);
    m_fills->bind(m_handlers);
    m_legend->bind(m_handlers);
    m_view->bind(m_handlers);
    m_look = new Look(this);
    m_look->bind(m_handlers);
    m_handlers.bind(EditOptions, [this] { editOptions(*m_session, *m_map, this); });
}

void DBase::connectMap()
{
    m_subscription = m_session->map().subscribe([this](const map::MapEvent &event) { mapChanged(event); });
    connect(m_map, &MapPane::pointedAt, this, [this] { m_status.showTube(m_map->pointedText()); });
    connect(&map(), &brannock::TubesheetMap::tubeActivated, this, [this](int tube) {
        m_runner.perform([this, tube] { m_dialogs->showTube(tube); }, CommandRunner::Words::Keep);
    });
    connect(&map(), &brannock::TubesheetMap::viewChanged, this, [this] {
        m_actions->refresh({When::ViewBefore, When::ViewAfter});
    });
    connect(&map(), &brannock::TubesheetMap::contextMenuRequested, this, [this](const QPoint &globalPos, int tube) {
        m_commands->pointedTube = tube;
        m_actions->refresh();
        m_mapMenu->popup(globalPos);
    });
    connect(&m_side->legendView(), &LegendView::contextMenuRequested, this, [this](const QPoint &globalPos, int place) {
        m_commands->pointedEntry = place;
        m_actions->refresh({When::Sections});
        m_legendMenu->popup(globalPos);
    });
}

void DBase::connectSession()
{
    m_session->changed = [this] { sessionChanged(); };
    m_session->replaced = [this] {
        m_commands->pointedTube = -1;
        sessionChanged();
    };
    m_session->makeProgress = [this](const QString &title) { return std::make_unique<WindowProgress>(this, title); };
}

void DBase::connectCommands()
{
    connect(&m_runner, &CommandRunner::begins, this, [this](CommandRunner::Words words) {
        m_side->legendView().endRename();
        if (words == CommandRunner::Words::Forget)
            m_status.line().forget();
    });
    connect(&m_runner, &CommandRunner::ended, this, [this] {
        m_status.line().endWork();
        m_notes.refresh();
        scheduleRefresh();
    });
    connect(m_projects.get(), &ProjectCommands::projectWanted, this, &DBase::openProject);
    connect(m_start, &StartPage::projectChosen, this,
            [this](const QString &folder) { m_runner.perform([this, folder] { m_projects->openFolder(folder); }); });
    connect(m_commands.get(), &WindowCommands::workChanged, m_recovery, &RecoveryKeeper::noteChange);
    connect(m_recovery, &RecoveryKeeper::kept, this, [this] { m_status.showProtection(*m_session); });
}

void DBase::setFileDialogs(tarnwick::FileDialogs *dialogs)
{
    m_commands->setFileDialogs(dialogs);
    m_projects->setFileDialogs(dialogs);
    m_dialogs->setFileDialogs(dialogs);
    m_fills->setFileDialogs(dialogs);
}

bool DBase::openProject(const QString &folder)
{
    if (!m_session->openProject(projectFolder(folder)))
        return false;
    // The messages about the database must remain visible after the map was opened.
    m_status.line().setJoins(true);
    const auto end = qScopeGuard([this] { m_status.line().setJoins(false); });
    m_session->openMapAtStart();
    map().setFocus();
    // After the window has been shown with its restored layout.
    if (m_session->headerDraft)
        QMetaObject::invokeMethod(
            this, [this] { m_runner.perform([this] { m_commands->editHeader(); }); }, Qt::QueuedConnection);
    return true;
}

bool DBase::openFiles(const QStringList &paths)
{
    FileOpener opener(
        *m_session,
        {.openProject = [this](const QString &folder) { return m_commands->mayReplaceMap() && openProject(folder); },
         .connectDatabase = [this](const QString &path) { m_session->connectDatabase(path); },
         .openMap = [this](const QString &path) { m_commands->openMap(path); },
         .openQuery = [this](const QString &path) { m_dialogs->queries().openSqlEditor(path); },
         .openPlan = [this](const QString &path) { m_dialogs->plans().showPlans(path); },
         .openList = [this](const QString &path) { m_fills->openList(path); },
         .uploadReports = [this](const QStringList &files) { m_dialogs->results().uploadReports(files); },
         .convertTexts = [this](const QStringList &files) { m_dialogs->results().convertReports(files); }});
    return opener.open(paths);
}

bool DBase::addQueryFile(const QString &machinePath)
{
    return m_fills->addQueryFile(machinePath);
}

void DBase::mapChanged(const map::MapEvent &event)
{
    // The last message refers to the map before this change.
    if (!event.has(map::MapEvent::File | map::MapEvent::Component))
        m_status.line().forget();
    scheduleRefresh();
}

void DBase::sessionChanged()
{
    m_map->setProjectOpen(m_session->hasProject());
    m_start->refresh(*m_session);
    if (!m_session->hasProject())
        m_start->focusFirst();
    m_notes.refresh();
    for (const int list : {FirstRecentProject, FirstRecentDatabase, FirstRecentMap})
        m_actions->refreshList(list);
    refreshTitle();
    refreshAll();
}

void DBase::scheduleRefresh()
{
    // Several changes in a row are shown together.
    if (!std::exchange(m_refreshScheduled, true))
        QMetaObject::invokeMethod(this, &DBase::refreshAll, Qt::QueuedConnection);
}

void DBase::refreshAll()
{
    m_refreshScheduled = false;
    m_side->refresh(*m_session);
    m_status.showTube(m_map->pointedText()); // its symbol may have changed
    m_status.showMap(*m_session);
    m_status.showProtection(*m_session);
    m_actions->refresh();
    for (QWidget *part : std::initializer_list<QWidget *>{m_viewBar, m_viewBar->findField(), m_mainBar, m_side})
        part->setEnabled(m_session->hasProject());
    m_recovery->noteChange();
}

void DBase::refreshTitle()
{
    const brannock::Project &project = m_session->project();
    setWindowTitle(app::windowTitle(QDir::toNativeSeparators(project.folder), project.name, isMinimized()));
}

void DBase::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && m_session)
        refreshTitle();
}

void DBase::dragEnterEvent(QDragEnterEvent *event)
{
    if (!tarnwick::droppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void DBase::dropEvent(QDropEvent *event)
{
    const QStringList paths = tarnwick::droppedFiles(*event->mimeData());
    // After the drop has ended: a dialog must not keep the other program waiting.
    QMetaObject::invokeMethod(
        this, [this, paths] { m_runner.perform([this, &paths] { openFiles(paths); }); }, Qt::QueuedConnection);
}

void DBase::closeEvent(QCloseEvent *event)
{
    m_side->legendView().endRename();
    bool mayClose = false;
    m_runner.guard([this, &mayClose] { mayClose = m_commands->mayReplaceMap(); });
    if (!mayClose) {
        event->ignore();
        return;
    }
    m_recovery->end();
    // The next start shows the panels as they were beside the map.
    if (m_fullScreen->isOn())
        m_fullScreen->toggle();
    m_session->end();
    event->accept();
}

} // namespace app

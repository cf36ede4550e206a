#include "DBase.h"

#include "CommandActions.h"
#include "CommandState.h"
#include "FillCommands.h"
#include "FullScreen.h"
#include "LegendModel.h"
#include "LegendPart.h"
#include "LegendView.h"
#include "MainToolBar.h"
#include "MapPane.h"
#include "OptionsCommand.h"
#include "RecentMenus.h"
#include "RecoveryKeeper.h"
#include "SidePanel.h"
#include "StatusLine.h"
#include "TextBox.h"
#include "ViewBar.h"
#include "ViewCommands.h"
#include "WindowMenus.h"
#include "WindowProgress.h"

#include <app/logic/StartUp.h>

#include <tarnwick/FailureLog.h>
#include <tarnwick/gui/BoxPrompts.h>
#include <tarnwick/gui/OnScreen.h>

#include <QCloseEvent>
#include <QDir>
#include <QMenuBar>
#include <QScopeGuard>
#include <QSplitter>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr QSize kFirstSize{1280, 800};
/// Of the width, in percent: what the map gets at first.
constexpr int kMapShare = 66;

} // namespace

DBase::DBase(tarnwick::UserPrompts *prompts)
    : m_status(statusBar())
    , m_boxes(prompts ? nullptr
                      : std::make_unique<tarnwick::BoxPrompts>(this,
                                                               [this](const QString &text) {
                                                                   m_status.line().say(text);
                                                                   m_status.line().repaint();
                                                               }))
    , m_loggedBoxes(prompts ? nullptr : std::make_unique<tarnwick::LoggedPrompts>(*m_boxes, u"arvo"_s))
    , m_prompts(prompts ? *prompts : *m_loggedBoxes)
    , m_session(std::make_unique<ProjectSession>(m_prompts))
    , m_systemDialogs(this)
    , m_runner(m_prompts, nullptr)
{
    setObjectName(u"mainWindow"_s);
    setWindowTitle(QString::fromUtf16(kTitleAtCreation));
    m_actions = new CommandActions(this);
    m_menus = std::make_unique<WindowMenus>(*m_actions, *this);
    m_recent = new RecentMenus(*m_actions, this);
    makeCentre();
    makeCommands();
    connectMap();
    connectSession();
    connectCommands();
    resize(tarnwick::sizeOnScreen(*this, kFirstSize));
    m_map->setOptions(m_session->options());
    sessionChanged();
}

DBase::~DBase()
{
    m_session->changed = nullptr;
    m_session->replaced = nullptr;
    m_session->makeProgress = nullptr;
    // The views look at the session's map.
    m_side->legendModel().setDocument(nullptr);
    delete takeCentralWidget();
}

brannock::TubesheetMap &DBase::map()
{
    return m_map->map();
}

void DBase::makeCentre()
{
    m_mainBar = new MainToolBar(this);
    m_viewBar = new ViewBar(*m_actions, this);
    addToolBar(m_mainBar);
    addToolBar(m_viewBar);
    menuBar()->setCornerWidget(m_viewBar->findField());
    m_map = new MapPane(m_session->map());
    m_side = new SidePanel(*m_actions);
    m_side->legendModel().setDocument(&m_session->map());
    m_splitter = new QSplitter(Qt::Horizontal);
    m_splitter->setObjectName(u"mainSplitter"_s);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_map);
    m_splitter->addWidget(m_side);
    // No part has a stretch factor: each keeps its share of the width in a window of another size.
    m_splitter->setSizes({kFirstSize.width() * kMapShare / 100, kFirstSize.width() * (100 - kMapShare) / 100});
    setCentralWidget(m_splitter);
    m_fullScreen =
        new FullScreen({this, m_splitter, &map(), {m_mainBar, m_viewBar, m_side, statusBar(), m_viewBar->findField()}});
}

void DBase::makeCommands()
{
    m_recovery = new RecoveryKeeper(*m_session, m_runner, this);
    m_commands = std::make_unique<WindowCommands>(*m_session, map(), *m_recent, this);
    m_commands->setFileDialogs(&m_systemDialogs);
    m_fills = std::make_unique<FillCommands>(*m_session, *m_map, *m_side, this);
    m_legend = new LegendPart(m_session->map(), m_session->fillRunner(), *m_fills, *m_side, m_runner, this);
    m_view =
        std::make_unique<ViewCommands>(*m_session, ViewCommands::Parts{*this, *m_map, *m_side, *m_mainBar, *m_viewBar,
                                                                       *m_fullScreen, *m_commands, m_runner});
    m_state =
        std::make_unique<CommandState>(*m_session, CommandState::Parts{*m_actions, *m_recent, *m_mainBar, *m_viewBar,
                                                                       *menuBar(), *m_splitter, map(), *m_commands});
}

void DBase::connectMap()
{
    m_subscription = m_session->map().subscribe([this](const map::MapEvent &event) { mapChanged(event); });
    connect(m_map, &MapPane::pointedAt, this, [this] { m_status.showTube(m_map->pointedText()); });
    connect(&map(), &brannock::TubesheetMap::viewChanged, this, [this] { m_state->refreshView(); });
    connect(&map(), &brannock::TubesheetMap::contextMenuRequested, this, [this](const QPoint &globalPos, int tube) {
        m_commands->pointedTube = tube;
        m_state->refresh();
        m_menus->showMapMenu(globalPos);
    });
    connect(&m_side->legendView(), &LegendView::contextMenuRequested, this, [this](const QPoint &globalPos, int place) {
        m_commands->pointedEntry = place;
        m_menus->showLegendMenu(globalPos, m_session->map().entry(place).allSections);
    });
}

void DBase::connectSession()
{
    m_session->changed = [this] { sessionChanged(); };
    m_session->replaced = [this] {
        m_systemDialogs.forgetFolders();
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
        scheduleRefresh();
    });
    connect(m_actions, &CommandActions::triggered, this,
            [this](int command) { m_runner.perform([this, command] { m_commands->run(command); }); });
    connect(m_actions, &CommandActions::extraTriggered, this, [this](Extra extra) {
        using Words = CommandRunner::Words;
        m_runner.perform([this, extra] { runExtra(extra); },
                         ViewCommands::isOnlyView(extra) ? Words::Keep : Words::Forget);
    });
    connect(m_mainBar, &MainToolBar::buttonPressed, this,
            [this](const QString &name) { m_runner.perform([this, &name] { pressButton(name); }); });
    connect(m_mainBar, &MainToolBar::fillRequested, this,
            [this](const QString &key) { m_runner.perform([this, &key] { m_fills->make(key); }); });
    connect(m_commands.get(), &WindowCommands::projectWanted, this, &DBase::openProject);
    connect(m_commands.get(), &WindowCommands::fullScreenWanted, m_fullScreen, &FullScreen::toggle);
    connect(m_commands.get(), &WindowCommands::closeWanted, this, &QWidget::close);
    connect(m_commands.get(), &WindowCommands::aboutWanted, this, [this] { showAbout(this); });
    connect(m_commands.get(), &WindowCommands::projectInfoWanted, this, [this] { showProjectInfo(this, *m_session); });
    connect(m_commands.get(), &WindowCommands::workChanged, m_recovery, &RecoveryKeeper::noteChange);
    connect(m_recovery, &RecoveryKeeper::kept, this, [this] { m_status.showProtection(*m_session); });
    // A file may go, and come again, while the program runs.
    for (const QMenu *menu : m_menus->recentMenus())
        connect(menu, &QMenu::aboutToShow, this, [this] {
            m_state->refreshMenus();
            m_state->refresh();
        });
}

void DBase::runExtra(Extra extra)
{
    if (!m_view->run(extra))
        m_legend->run(extra);
}

void DBase::pressButton(const QString &name)
{
    if (name == u"updateButton"_s)
        m_commands->updateMap();
    else if (name == u"headerButton"_s)
        m_commands->editHeader();
    else if (name == u"optionsButton"_s)
        editOptions(*m_session, *m_map, this);
}

bool DBase::openProject(const QString &folder)
{
    if (!m_session->openProject(projectFolder(folder)))
        return false;
    {
        // What was said about the database is still to be read when the map has been opened.
        const auto end = qScopeGuard([this] { m_status.line().setJoins(false); });
        m_status.line().setJoins(true);
        m_session->openMapAtStart();
    }
    map().setFocus();
    // Once the window is there with what was restored.
    if (m_session->headerDraft)
        QMetaObject::invokeMethod(
            this, [this] { m_runner.perform([this] { m_commands->editHeader(); }); }, Qt::QueuedConnection);
    return true;
}

bool DBase::addQueryFile(const QString &machinePath)
{
    return m_fills->addQueryFile(machinePath);
}

void DBase::mapChanged(const map::MapEvent &event)
{
    // What was said last is about the map before this change.
    if (!event.has(map::MapEvent::File | map::MapEvent::Component))
        m_status.line().forget();
    scheduleRefresh();
}

void DBase::sessionChanged()
{
    m_map->setProjectOpen(m_session->hasProject());
    m_state->refreshMenus();
    refreshTitle();
    refreshAll();
}

void DBase::scheduleRefresh()
{
    // Many changes in a row are shown once.
    if (!std::exchange(m_refreshScheduled, true))
        QMetaObject::invokeMethod(this, &DBase::refreshAll, Qt::QueuedConnection);
}

void DBase::refreshAll()
{
    m_refreshScheduled = false;
    m_side->refresh(*m_session);
    m_status.showTube(m_map->pointedText()); // its symbol may be another one now
    m_status.showMap(*m_session);
    m_status.showProtection(*m_session);
    m_state->refresh();
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
    // The next start begins with the panels, as they stood beside the map.
    if (m_fullScreen->isOn())
        m_fullScreen->toggle();
    m_session->end();
    event->accept();
}

} // namespace app

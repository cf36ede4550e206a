#include "DBase.h"

#include "CommandActions.h"
#include "LegendModel.h"
#include "LegendView.h"
#include "MainToolBar.h"
#include "RecentMenus.h"
#include "SidePanel.h"
#include "StatusLine.h"
#include "ViewBar.h"
#include "WindowProgress.h"

#include <app/logic/Messages.h>
#include <app/logic/SelectionCommands.h>
#include <app/logic/StartUp.h>
#include <app/logic/TubeFinder.h>

#include <db/Errors.h>
#include <plans/FillCommit.h>
#include <query/Messages.h>
#include <query/QueryDocument.h>
#include <tarnwick/FailureLog.h>
#include <tarnwick/gui/BoxPrompts.h>
#include <tarnwick/gui/Guarded.h>
#include <tarnwick/gui/OnScreen.h>

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace app {

namespace {

constexpr QSize kFirstSize{1280, 800};
/// Of the width: what the map gets at first.
constexpr int kMapShare = 66;
/// Milliseconds from a change to the copy for the case of a crash, so that changes in a row are written once.
constexpr int kRecoveryDelay = 300;

/// Commands that change only what is seen of the map and the window.
bool isOnlyView(Extra extra)
{
    constexpr Extra kViews[] = {Extra::ZoomIn,   Extra::ZoomOut, Extra::ZoomFit,  Extra::PreviousView, Extra::NextView,
                                Extra::FindTube, Extra::Changes, Extra::NextPart, Extra::Keys};
    return std::find(std::begin(kViews), std::end(kViews), extra) != std::end(kViews);
}

} // namespace

DBase::DBase(tarnwick::UserPrompts *prompts)
    : m_boxes(prompts ? nullptr
                      : std::make_unique<tarnwick::BoxPrompts>(this,
                                                               [this](const QString &text) {
                                                                   m_statusText->say(text);
                                                                   m_statusText->repaint();
                                                               }))
    , m_loggedBoxes(prompts ? nullptr : std::make_unique<tarnwick::LoggedPrompts>(*m_boxes, u"arvo"_s))
    , m_prompts(prompts ? prompts : m_loggedBoxes.get())
    , m_systemDialogs(this)
{
    setObjectName(u"mainWindow"_s);
    setWindowTitle(QString::fromUtf16(kTitleAtCreation));
    makeStatusBar();
    m_session = std::make_unique<ProjectSession>(*m_prompts);
    makeActions();
    makeCentre();
    WindowActions &own = *this;
    m_commands = std::make_unique<WindowCommands>(*m_session, *this, *m_map, *m_recent, own, this);
    m_commands->setFileDialogs(&m_systemDialogs);
    connectMap();
    connectLegend();
    connectBars();
    m_recoveryDelay.setSingleShot(true);
    m_recoveryDelay.setInterval(kRecoveryDelay);
    connect(&m_recoveryDelay, &QTimer::timeout, this, [this] {
        if (!m_isTryingOut)
            guard([this] { m_session->updateRecoveryCopy(); });
        refreshProtection();
    });
    resize(tarnwick::sizeOnScreen(*this, kFirstSize));
    projectChanged();
}

DBase::~DBase()
{
    m_session->changed = nullptr;
    m_session->replacing = nullptr;
    m_session->replaced = nullptr;
    m_session->makeProgress = nullptr;
    m_session->legend().changed = nullptr;
    m_map->setSteamGen(nullptr);
    m_side->legendModel().setLegend(nullptr);
}

void DBase::makeStatusBar()
{
    m_statusText = new StatusLine;
    m_statusText->setObjectName(u"statusText"_s);
    m_tubeText = new QLabel;
    m_tubeText->setObjectName(u"tubeText"_s);
    m_mapText = new QLabel;
    m_mapText->setObjectName(u"mapText"_s);
    m_selectionText = new QLabel;
    m_selectionText->setObjectName(u"selectionText"_s);
    m_protectionText = new QLabel(u"No crash protection"_s);
    m_protectionText->setObjectName(u"protectionText"_s);
    m_protectionText->hide();
    for (QLabel *label : {m_tubeText, m_protectionText, m_mapText, m_selectionText})
        label->setContentsMargins(fontMetrics().height(), 0, 0, 0);
    statusBar()->addWidget(m_statusText, 1);
    statusBar()->addPermanentWidget(m_tubeText);
    statusBar()->addPermanentWidget(m_protectionText);
    statusBar()->addPermanentWidget(m_mapText);
    statusBar()->addPermanentWidget(m_selectionText);
}

void DBase::makeActions()
{
    m_actions = new CommandActions(this);
    m_actions->buildMenuBar(menuBar(), kMenuBar);
    m_mapMenu = new QMenu(this);
    m_mapMenu->setObjectName(u"mapMenu"_s);
    m_actions->buildMenu(m_mapMenu, kMapMenu);
    m_legendMenu = new QMenu(this);
    m_legendMenu->setObjectName(u"legendMenu"_s);
    m_actions->buildMenu(m_legendMenu, kLegendMenu);
    // Accelerators must work while the menu bar is hidden, too.
    for (const MenuItem &item : kMenuBar) {
        QAction *action = item.kind == MenuItem::Item ? m_actions->action(item.command) : nullptr;
        if (action && !action->shortcut().isEmpty())
            addAction(action);
    }
    for (const ExtraInfo &info : kExtras) {
        if (info.scope == Scope::Window)
            m_actions->addExtra(info.extra, this);
    }
    QMenu *help = m_actions->menuOf(About);
    help->addSeparator();
    help->addAction(m_actions->extra(Extra::Keys));
    m_legendMenu->addSeparator();
    m_actions->addExtra(Extra::EntrySelect, m_legendMenu);
    m_legendMenu->addAction(m_actions->extra(Extra::CopyTubes));
    m_recent = new RecentMenus(*m_actions, this);
    // A file may go, and come again, while the program runs.
    for (const int placeholder : {NoRecentProject, NoRecentDatabase, NoRecentMap})
        connect(m_actions->menuOf(placeholder), &QMenu::aboutToShow, this, [this] {
            refreshMenus();
            refreshCommands();
        });
    connect(m_actions, &CommandActions::triggered, this,
            [this](int command) { perform([this, command] { m_commands->run(command); }); });
    connect(m_actions, &CommandActions::extraTriggered, this, [this](Extra extra) {
        perform([this, extra] { runExtra(extra); }, isOnlyView(extra) ? Words::Keep : Words::Forget);
    });
}

void DBase::makeCentre()
{
    m_mainBar = new MainToolBar(this);
    m_viewBar = new ViewBar(*m_actions, this);
    addToolBar(m_mainBar);
    addToolBar(m_viewBar);
    menuBar()->setCornerWidget(m_viewBar->findField());
    m_map = new brannock::TubesheetMap;
    m_map->setObjectName(u"map"_s);
    m_map->setTubeTip(true);
    m_side = new SidePanel(*m_actions);
    m_splitter = new QSplitter(Qt::Horizontal);
    m_splitter->setObjectName(u"mainSplitter"_s);
    m_splitter->setChildrenCollapsible(false);
    auto *hint = new QLabel(u"No project is open.\n\nOpen one with \"File | Open Project ...\",\nor choose one of "
                            u"\"File | Recent Projects\"."_s);
    hint->setObjectName(u"noProject"_s);
    hint->setAlignment(Qt::AlignCenter);
    // The whole centre is disabled without a project; what to do about it must be read all the same.
    QPalette readable = hint->palette();
    readable.setColor(QPalette::Disabled, QPalette::WindowText, readable.color(QPalette::Active, QPalette::WindowText));
    hint->setPalette(readable);
    m_centre = new QStackedWidget;
    m_centre->addWidget(m_map);
    m_centre->addWidget(hint);
    m_splitter->addWidget(m_centre);
    m_splitter->addWidget(m_side);
    // No part has a stretch factor: each keeps its share of the width in a window of another size.
    m_splitter->setSizes({kFirstSize.width() * kMapShare / 100, kFirstSize.width() * (100 - kMapShare) / 100});
    setCentralWidget(m_splitter);
    applyMapOptions();
}

void DBase::connectMap()
{
    using brannock::TubesheetMap;
    connect(m_map, &TubesheetMap::selectionWanted, this, &DBase::selectTubes);
    connect(m_map, &TubesheetMap::hovered, this, &DBase::showTube);
    connect(m_map, &TubesheetMap::viewChanged, this, &DBase::refreshViewCommands);
    connect(m_map, &TubesheetMap::contextMenuRequested, this, &DBase::showMapMenu);
    m_map->installEventFilter(this);
    menuBar()->installEventFilter(this);
    m_map->setTipText([this](int tube) { return tipLines(tube); });
    m_session->undo().captureExtras = [this] {
        return plans::MapExtras{m_map->xOrientation(), m_map->yOrientation(), m_session->map().headerRecord()};
    };
    m_session->undo().restoreExtras = [this](const plans::MapExtras &extras) {
        m_map->setXOrientation(extras.xOrientation);
        m_map->setYOrientation(extras.yOrientation);
        m_session->map().setHeaderRecord(extras.header);
    };
    m_session->undo().restored = [this] { redrawMap(); };
}

void DBase::connectLegend()
{
    LegendModel &model = m_side->legendModel();
    LegendView &view = m_side->legendView();
    m_session->legend().changed = [this] { scheduleRefresh(); };
    m_session->changed = [this] { sessionChanged(); };
    m_session->replacing = [this] { m_map->setSteamGen(nullptr); };
    m_session->replaced = [this] {
        m_systemDialogs.forgetFolders();
        m_commands->pointedTube = -1;
        m_map->setXOrientation(1);
        m_map->setYOrientation(1);
        projectChanged();
    };
    m_session->makeProgress = [this](const QString &title) { return std::make_unique<WindowProgress>(this, title); };
    connect(&model, &LegendModel::showRequested, this, [this](int entry, bool shown) {
        attempt([this, entry, shown] { LegendEditor(*this).setShown(entry, shown); });
    });
    connect(&model, &LegendModel::moveRequested, this, [this, &view](int from, int to) {
        attempt([this, &view, from, to] {
            const int place = LegendEditor(*this).move(from, to);
            refreshLegend();
            view.setCurrentEntry(place);
        });
    });
    connect(&model, &LegendModel::renameRequested, this, [this](int entry, const QString &label) {
        attempt([this, entry, &label] { LegendEditor(*this).rename(entry, label); });
    });
    connect(&view, &LegendView::contextMenuRequested, this, &DBase::showLegendMenu);
    connect(&view, &LegendView::entryActivated, this,
            [this](int entry) { perform([this, entry] { editEntry(entry); }); });
    connect(&view, &LegendView::symbolRequested, this,
            [this](int entry) { perform([this, entry] { chooseSymbol(entry); }); });
}

void DBase::perform(const std::function<void()> &work, Words words)
{
    m_side->legendView().endRename();
    if (words == Words::Forget)
        m_statusText->forget();
    attempt(work);
}

void DBase::attempt(const std::function<void()> &work)
{
    guard(work);
    m_statusText->endWork();
    scheduleRefresh();
}

void DBase::undoCheckpoint(const QString &label)
{
    m_session->undo().checkpoint(label);
    // What was said last is about the map before this change.
    m_statusText->forget();
}

void DBase::guard(const std::function<void()> &work)
{
    tarnwick::guarded(*m_prompts, [&work, this] {
        try {
            work();
        } catch (const dao::DaoException &exception) {
            db::showDaoError(*m_prompts, exception, messages::kDatabaseFailed);
        }
    });
}

void DBase::pressButton(const QString &name)
{
    if (name == u"updateButton"_s)
        m_commands->updateMap();
    else if (name == u"headerButton"_s)
        m_commands->editHeader();
    else if (name == u"optionsButton"_s)
        editOptions();
}

void DBase::connectBars()
{
    connect(m_mainBar, &MainToolBar::buttonPressed, this,
            [this](const QString &name) { perform([this, &name] { pressButton(name); }); });
    m_viewBar->setCompletions([this](const QString &text) {
        constexpr int kMostCompletions = 100;
        return TubeFinder(steamGen()).completions(text, kMostCompletions);
    });
    connect(m_mainBar, &MainToolBar::fillRequested, this,
            [this](const QString &key) { perform([this, &key] { makeFill(key); }); });
    connect(m_viewBar, &ViewBar::findRequested, this,
            [this](const QString &address) { perform([this, &address] { findTube(address); }); });
    connect(m_viewBar, &ViewBar::dragModeChosen, m_map, &brannock::TubesheetMap::setDragMode);
    connect(m_viewBar, &ViewBar::findLeft, m_map, qOverload<>(&QWidget::setFocus));
    connect(m_viewBar, &ViewBar::changesWanted, this, [this] {
        const plans::UndoStack &changes = m_session->undo().stack();
        const bool hasFile = !m_session->map().file().isEmpty();
        m_viewBar->setChanges(changes.labels(), changes.position(), hasFile ? changes.cleanPosition() : -1);
    });
    connect(m_viewBar, &ViewBar::changesRequested, this,
            [this](int position) { perform([this, position] { m_commands->moveTo(position); }); });
}

void DBase::setFileDialogs(FileDialogs *dialogs)
{
    m_commands->setFileDialogs(dialogs);
}

bool DBase::openProject(const QString &folder)
{
    if (!m_session->openProject(projectFolder(folder)))
        return false;
    {
        // What was said about the database is still to be read when the map has been opened.
        const auto end = qScopeGuard([this] { m_statusText->setJoins(false); });
        m_statusText->setJoins(true);
        m_session->openMapAtStart();
    }
    m_map->setFocus();
    // Once the window is there with what was restored.
    if (m_session->headerDraft)
        QMetaObject::invokeMethod(
            this, [this] { perform([this] { m_commands->editHeader(); }); }, Qt::QueuedConnection);
    return true;
}

void DBase::projectChanged()
{
    m_map->setSteamGen(m_session->hasProject() ? &m_session->project().steamGen : nullptr, &tubes());
    m_centre->setCurrentIndex(m_session->hasProject() ? 0 : 1);
    m_side->legendModel().setLegend(&m_session->legend());
    sessionChanged();
}

bool DBase::addQueryFile(const QString &machinePath)
{
    query::QueryDocument document;
    try {
        query::readQueryFile(document, machinePath, m_session->roots());
    } catch (const tarnwick::Error &error) {
        const tarnwick::Message &message = query::messages::kReadFile;
        m_prompts->showError(tarnwick::kErrorSeverity, message.number,
                             QString::fromUtf16(message.text) + u"\n\n"_s + error.text());
        return false;
    }
    return plans::addFillOfQuery(*this, document);
}

bool DBase::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: {
        const auto *key = static_cast<QKeyEvent *>(event);
        // Taken from the shortcut, the key goes to what has the focus.
        if (key->key() == Qt::Key_Escape && (key->isAutoRepeat() || !isEscForFullScreen())) {
            event->accept();
            return true;
        }
        break;
    }
    case QEvent::WindowBlocked:
        m_map->setTipHidden(true);
        break;
    case QEvent::WindowUnblocked:
        m_map->setTipHidden(false);
        m_sinceReturn.start();
        break;
    default:
        break;
    }
    return QMainWindow::event(event);
}

bool DBase::eventFilter(QObject *watched, QEvent *event)
{
    const bool isFocus = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
    if (isFocus && watched == menuBar() && m_isFullScreen &&
        static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
        showMenuBar(event->type() == QEvent::FocusIn);
    if (watched == m_map && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason)
            m_sinceReturn.start();
    }
    // Esc while something is dragged on the map ends the drag and not the window's usual view.
    if (watched == m_map && event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape && QGuiApplication::mouseButtons() != Qt::NoButton)
        event->accept();
    return QMainWindow::eventFilter(watched, event);
}

void DBase::closeEvent(QCloseEvent *event)
{
    m_side->legendView().endRename();
    bool mayClose = false;
    guard([this, &mayClose] { mayClose = m_commands->mayReplaceMap(); });
    if (!mayClose) {
        event->ignore();
        return;
    }
    m_recoveryDelay.stop();
    m_session->endRecovery();
    // The next start begins with the panels, as they stood beside the map.
    if (m_isFullScreen)
        toggleFullScreen();
    m_session->end();
    event->accept();
}

} // namespace app

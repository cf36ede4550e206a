#pragma once
#include "CommandRunner.h"
#include "StatusBar.h"
#include "WindowCommands.h"

#include <app/logic/TubeNotes.h>
#include <app/logic/WindowCommandTable.h>

#include <query/dialogs/JParamDlg.h>
#include <tarnwick/CommandHandlers.h>
#include <tarnwick/gui/FileDialogs.h>

#include <QMainWindow>

class QSplitter;
class QToolBar;

namespace brannock {
class TubesheetMap;
}

namespace tarnwick {
class CommandActions;
}

namespace app {

class DialogCommands;
class FillCommands;
class FullScreen;
class LegendPart;
class Look;
class MapPane;
class ProjectCommands;
class RecoveryKeeper;
class SidePanel;
class StartPage;
class ViewBar;
class ViewCommands;
class WindowPrompts;

/// The main window. Creates and connects its parts; the work is done in their classes and, without widgets, in logic.
class DBase : public QMainWindow
{
    Q_OBJECT
public:
    /// prompts: null for message boxes of this window.
    explicit DBase(tarnwick::UserPrompts *prompts = nullptr);
    ~DBase() override;

    /// Returns false after reporting why the project could not be opened.
    bool openProject(const QString &folder);
    /// Opens files of the project, each in its window or dialog, see FileOpener. Returns false after reporting a
    /// failure.
    bool openFiles(const QStringList &paths);
    /// Runs a query file and adds its tubes to the legend. Returns false after reporting the failure.
    bool addQueryFile(const QString &machinePath);
    ProjectSession &projectSession() { return *m_session; }
    brannock::TubesheetMap &map();
    tarnwick::CommandActions &commands() { return *m_actions; }
    CommandRunner &runner() { return m_runner; }
    Look &look() { return *m_look; }
    /// Replaces the file dialogs in tests.
    void setFileDialogs(tarnwick::FileDialogs *dialogs);
    /// Updates everything that depends on map and session at once. After changes this happens automatically with a
    /// short delay.
    void refreshAll();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void makeActions();
    void makeCentre();
    void makeCommands();
    void connectMap();
    void connectSession();
    void connectCommands();

    void mapChanged(const map::MapEvent &event);
    void sessionChanged();
    void scheduleRefresh();
    void refreshTitle();

    StatusBar m_status;
    std::unique_ptr<WindowPrompts> m_ownPrompts;
    tarnwick::UserPrompts &m_prompts;
    std::unique_ptr<ProjectSession> m_session;
    TubeNotes m_notes;
    query::ParameterDialogs m_parameterDialogs;
    tarnwick::FileDialogs m_systemDialogs;
    CommandRunner m_runner;
    tarnwick::CommandHandlers m_handlers{kWindowCommands};
    tarnwick::CommandActions *m_actions = nullptr;
    QMenu *m_mapMenu = nullptr;
    QMenu *m_legendMenu = nullptr;
    QToolBar *m_mainBar = nullptr;
    ViewBar *m_viewBar = nullptr;
    QSplitter *m_splitter = nullptr;
    MapPane *m_map = nullptr;
    StartPage *m_start = nullptr;
    SidePanel *m_side = nullptr;
    FullScreen *m_fullScreen = nullptr;
    LegendPart *m_legend = nullptr;
    Look *m_look = nullptr;
    RecoveryKeeper *m_recovery = nullptr;
    std::unique_ptr<WindowCommands> m_commands;
    std::unique_ptr<ProjectCommands> m_projects;
    std::unique_ptr<DialogCommands> m_dialogs;
    std::unique_ptr<FillCommands> m_fills;
    std::unique_ptr<ViewCommands> m_view;
    bool m_refreshScheduled = false;
    map::Subscription m_subscription;
};

} // namespace app

#pragma once
#include "FileDialogs.h"
#include "WindowCommands.h"

#include <app/logic/Commands.h>

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>

class QLabel;
class QSplitter;
class QStackedWidget;

namespace tarnwick {
class BoxPrompts;
class LoggedPrompts;
} // namespace tarnwick

namespace app {

class CommandActions;
class MainToolBar;
class SidePanel;
class StatusLine;
class ViewBar;

/// The program's one main window: the tubesheet map, the legend, the panels, menus and tool bars. It wires these parts;
/// what they do stands in their own classes and, without widgets, in logic.
class DBase : public QMainWindow, public plans::MapHost, private WindowActions
{
    Q_OBJECT
public:
    /// prompts: null for message boxes over this window.
    explicit DBase(tarnwick::UserPrompts *prompts = nullptr);
    ~DBase() override;

    /// False, with the reason said, when the folder holds no project that can be opened.
    bool openProject(const QString &folder);
    /// Runs a query file and adds its tubes to the legend. False, with the reason said, when it cannot.
    bool addQueryFile(const QString &machinePath);
    ProjectSession &projectSession() { return *m_session; }
    brannock::TubesheetMap &map() { return *m_map; }
    CommandActions &commands() { return *m_actions; }
    /// What becomes of the words in the status line when a command begins.
    enum class Words { Forget, Keep };
    /// What the user asked for by a command. What fails in it is said and never ends the program.
    void perform(const std::function<void()> &work, Words words = Words::Forget);
    /// Tests put their own in place of the system's.
    void setFileDialogs(FileDialogs *dialogs);
    /// Brings what follows from map and legend up to date now; changes do it by themselves a moment later.
    void refreshAll();

    // For fills and dialogs.
    brannock::Project &project() override { return m_session->project(); }
    const ellery::SteamGen &steamGen() override { return m_session->project().steamGen; }
    ellery::TubeStates &tubes() override { return m_session->legend().tubes(); }
    plans::MapLegend &legend() override { return m_session->legend(); }
    db::DatabaseSession &session() override { return m_session->database(); }
    tarnwick::UserPrompts &prompts() override { return *m_prompts; }
    plans::QuerySource &queries() override { return m_session->queries(); }
    void undoCheckpoint(const QString &label) override;
    void redrawMap() override;
    void refreshLegend() override;
    tarnwick::JMacro systemMacros() override { return m_session->systemMacros(); }
    tarnwick::JMacro userMacros() override { return m_session->options().userMacros; }
    void setBusy(bool busy) override;

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeActions();
    void makeCentre();
    void makeStatusBar();
    void connectMap();
    void connectLegend();
    void connectBars();

    // WindowActions
    void openProjectFolder(const QString &folder) override { openProject(folder); }
    void toggleFullScreen() override;
    void closeWindow() override { close(); }
    void showAbout() override;
    void showProjectInfo() override;
    void keepWork() override;

    void showMenuBar(bool shown);
    /// Esc goes to the full screen and back, and not to something else that has the focus.
    bool isEscForFullScreen() const;
    /// The same as perform() for what is no command of its own: a description that is being typed is left alone.
    void attempt(const std::function<void()> &work);
    /// Nothing else: what fails is said.
    void guard(const std::function<void()> &work);
    void pressButton(const QString &name);
    void runExtra(Extra extra);
    void editOptions();
    void selectTubes(const QList<qint32> &tubes, ellery::SelectMode mode);
    void findTube(const QString &address);
    void goToNextPart();
    void copyTubes();
    void showKeys();
    void makeFill(const QString &key);
    void editEntry(int entry);
    void chooseSymbol(int entry);
    void showMapMenu(const QPoint &globalPos, int tube);
    void showLegendMenu(const QPoint &globalPos, int entry);
    void showTube(int tube);

    void projectChanged();
    void sessionChanged();
    void scheduleRefresh();
    CommandContext commandContext();
    void refreshCommands();
    void refreshViewCommands();
    /// Recent lists, and which menus open: after a project or database was opened or closed.
    void refreshMenus();
    void refreshPanels();
    void refreshProtection();
    void refreshTitle();
    void applyMapOptions();
    QStringList tipLines(int tube) const;

    std::unique_ptr<tarnwick::BoxPrompts> m_boxes;
    std::unique_ptr<tarnwick::LoggedPrompts> m_loggedBoxes;
    tarnwick::UserPrompts *m_prompts;
    std::unique_ptr<ProjectSession> m_session;
    FileDialogs m_systemDialogs;
    CommandActions *m_actions = nullptr;
    RecentMenus *m_recent = nullptr;
    MainToolBar *m_mainBar = nullptr;
    ViewBar *m_viewBar = nullptr;
    QSplitter *m_splitter = nullptr;
    QStackedWidget *m_centre = nullptr; ///< the map, or what to do without a project
    brannock::TubesheetMap *m_map = nullptr;
    SidePanel *m_side = nullptr;
    QMenu *m_mapMenu = nullptr;
    QMenu *m_legendMenu = nullptr;
    StatusLine *m_statusText = nullptr;
    QLabel *m_tubeText = nullptr;
    QLabel *m_mapText = nullptr; ///< whether the map has unsaved changes
    QLabel *m_selectionText = nullptr;
    QLabel *m_protectionText = nullptr; ///< that a crash would cost the unsaved changes
    std::unique_ptr<WindowCommands> m_commands;
    QTimer m_recoveryDelay;
    int m_tubeShown = -1; ///< in the status bar
    bool m_refreshScheduled = false;
    bool m_isFullScreen = false;
    QList<int> m_sharesBefore;   ///< of map and side panel, before the full screen
    QElapsedTimer m_sinceReturn; ///< from a menu or dialog to this window
    bool m_isTryingOut = false;  ///< the map shows what has not been decided upon
};

} // namespace app

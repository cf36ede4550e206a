#pragma once
#include "PanelTexts.h"
#include "RecentFiles.h"

#include <brannock/SystemOption.h>
#include <db/revision/ConnectDatabase.h>
#include <map/FillRunner.h>
#include <map/MapRecovery.h>
#include <plans/ProjectQueries.h>
#include <query/ArvoOptions.h>
#include <tarnwick/base/Progress.h>

namespace app {

/// The open project with its component, database, map, options and recent lists. Does not know the window.
class ProjectSession : private db::ConnectionListener
{
public:
    /// Reads the options. Options that cannot be read are reported and keep their defaults.
    explicit ProjectSession(tarnwick::UserPrompts &prompts);
    ~ProjectSession() override;
    ProjectSession(const ProjectSession &) = delete;
    ProjectSession &operator=(const ProjectSession &) = delete;

    /// Replaces the project by that of a folder, calls replaced, and connects its database. If the folder contains no
    /// project or a damaged one, this is reported, the present project remains, and the result is false.
    bool openProject(const QString &folder);
    bool hasProject() const { return m_project->isLoaded(); }
    /// An empty project if none is open.
    brannock::Project &project() { return *m_project; }
    const brannock::Project &project() const { return *m_project; }

    /// Reads the component again if its files have changed. Legend and selection keep their tubes by address, and the
    /// undo history is cleared. A failure is reported and changes nothing. Returns the number of entries' tubes that do
    /// not exist any more.
    int reloadComponent();

    map::MapDocument &map() { return m_map; }
    const map::MapDocument &map() const { return m_map; }
    const map::FillRunner &fillRunner() const { return m_runner; }

    tarnwick::UserPrompts &prompts() { return m_prompts; }
    db::DatabaseSession &database() { return m_database; }
    DatabaseStatus databaseStatus() const;
    plans::ProjectQueries &queries() { return m_queries; }
    query::QueryContext &queryContext() { return m_queryContext; }
    const query::ArvoOptions &options() const { return m_options; }
    /// Sets and stores the options. If storing fails, this is reported, and the options are used until the end of the
    /// program.
    void setOptions(const query::ArvoOptions &options);
    tarnwick::PathRoots roots() const;
    tarnwick::JMacro systemMacros() const;
    /// Values of all keywords of the printed page.
    tarnwick::JMacro printMacros() const;

    // The map's file (machine paths). Opening a map clears the undo history.
    void newMap();
    bool openMap(const QString &machinePath);
    bool saveMap(const QString &machinePath);
    /// Opens the first map of a project: unsaved changes of a crashed program if the user wants them, otherwise the map
    /// that was opened last.
    void openMapAtStart();
    /// If set, recovery copies are kept, starting with the next project that is opened.
    bool keepsRecoveryCopies = false;
    /// If not set, opened files are not added to the recent lists.
    bool keepsRecentFiles = true;
    /// Call after changes: updates the recovery copy.
    void updateRecoveryCopy();
    /// Reason why no recovery copy can be kept; empty if it can or if none is wanted.
    const QString &recoveryProblem() const { return m_recovery.problem(); }
    /// Content of the header dialog that is not set yet; after a crash, the content at the crash.
    std::optional<map::HeaderDraft> headerDraft;
    /// Call at the regular end of the work on the map.
    void endRecovery() { m_recovery.end(); }

    /// Machine paths of folders, most recent first.
    const QStringList &recentProjects() const { return m_system.recentProjects; }
    /// Recent files of the project, in the suite's form of paths.
    RecentFiles::Lists recentFiles() const { return m_recent.lists(m_project->folder); }
    void clearRecentProjects();
    void clearRecentDatabases();
    void clearRecentMaps();

    // Commands on the database. They report failures.
    /// If it fails, the user is asked whether to connect to the former database again.
    bool connectDatabase(const QString &machinePath);
    bool createDatabase(const QString &machinePath);
    void closeDatabase();
    /// Asks the user first.
    void uploadComponent();
    /// Closes the database at the end of the program.
    void end();

    /// Called after another project was loaded, before its database is connected.
    std::function<void()> replaced;
    /// Creates a progress display with Cancel for long work, from its title. May be empty.
    std::function<std::unique_ptr<tarnwick::Progress>(const QString &title)> makeProgress;
    /// A new progress display; null if makeProgress is empty.
    std::unique_ptr<tarnwick::Progress> newProgress(const QString &title) const;
    /// Called after another project or map was opened or stored, a database was connected or closed, or a recent list
    /// was cleared.
    std::function<void()> changed;

private:
    void databaseConnected(const QString &path) override;
    bool connect(const QString &machinePath);
    void closeDatabase(const tarnwick::Message &failure);
    void load(tarnwick::OptionFile &options);
    /// Changes a recent list in the file that all running windows share.
    void change(tarnwick::OptionFile &recent, const std::function<void()> &change);
    void notify();
    void noteMapFile(const tarnwick::Message &status);

    QString componentFolder() const;

    tarnwick::UserPrompts &m_prompts;
    std::unique_ptr<brannock::Project> m_project;
    QByteArray m_componentStamp; ///< fingerprint of the files of the present component
    map::MapDocument m_map;
    map::MapRecovery m_recovery;
    brannock::SystemOption m_system;
    query::ArvoOptions m_options;
    RecentFiles m_recent;
    query::QueryContext m_queryContext;
    db::DatabaseSession m_database;
    plans::ProjectQueries m_queries;
    map::FillRunner m_runner;
};

} // namespace app

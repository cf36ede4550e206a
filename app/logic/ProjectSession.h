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

/// The open project with everything that belongs to it: component, database, map, options and recent lists.
/// Knows no window.
class ProjectSession : private db::ConnectionListener
{
public:
    /// Reads the options; what cannot be read is said and left at its defaults.
    explicit ProjectSession(tarnwick::UserPrompts &prompts);
    ~ProjectSession() override;
    ProjectSession(const ProjectSession &) = delete;
    ProjectSession &operator=(const ProjectSession &) = delete;

    /// Loads the project of a folder in place of the present one, tells replaced, and connects its database. A folder
    /// that holds none, or a damaged one, is said; the present project then stays. False in that case.
    bool openProject(const QString &folder);
    bool hasProject() const { return m_project->isLoaded(); }
    /// Empty without one.
    brannock::Project &project() { return *m_project; }
    const brannock::Project &project() const { return *m_project; }

    /// Reads the component again when its files have changed since. Legend and selection follow their tubes by address;
    /// undo begins anew. What cannot be read is said, and everything stays. Returns how many tubes of legend entries
    /// are not there any more.
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
    /// Takes the options over and stores them. When they cannot be stored, which is said, they hold until the end of
    /// the program.
    void setOptions(const query::ArvoOptions &options);
    tarnwick::PathRoots roots() const;
    tarnwick::JMacro systemMacros() const;
    /// Everything that keywords on the printed page may stand for.
    tarnwick::JMacro printMacros() const;

    // The map's file (machine paths). Undo begins anew with a map that was opened.
    void newMap();
    bool openMap(const QString &machinePath);
    bool saveMap(const QString &machinePath);
    /// What a project begins with: changes that a crash left unsaved, when the user wants them, else the map opened
    /// last.
    void openMapAtStart();
    /// Copies for the case of a crash are kept from the next project on that is opened.
    bool keepsRecoveryCopies = false;
    /// Off: what is opened stays out of the recent lists that the next start goes by.
    bool keepsRecentFiles = true;
    /// After changes: brings the copy up to date.
    void updateRecoveryCopy();
    /// Why a crash would cost the unsaved changes although copies are to be kept; empty when it would not.
    const QString &recoveryProblem() const { return m_recovery.problem(); }
    /// What stands in the header dialog, not yet set; after a crash, what stood there.
    std::optional<map::HeaderDraft> headerDraft;
    /// The work on the map has come to its proper end.
    void endRecovery() { m_recovery.end(); }

    /// Folders of this machine, most recent first.
    const QStringList &recentProjects() const { return m_system.recentProjects; }
    /// Of the project, in the suite's form of paths.
    RecentFiles::Lists recentFiles() const { return m_recent.lists(m_project->folder); }
    void clearRecentProjects();
    void clearRecentDatabases();
    void clearRecentMaps();

    // Commands on the database. What fails is said.
    /// When it fails, the database that was open before is offered again.
    bool connectDatabase(const QString &machinePath);
    bool createDatabase(const QString &machinePath);
    void closeDatabase();
    /// Asks first.
    void uploadComponent();
    /// The end of the program: closes the database.
    void end();

    /// Another project stands in its place; its database is about to be connected.
    std::function<void()> replaced;
    /// Makes what shows work that may take long, and lets the user stop it; its title is given. None: nobody watches.
    std::function<std::unique_ptr<tarnwick::Progress>(const QString &title)> makeProgress;
    /// One of these; null when nobody watches.
    std::unique_ptr<tarnwick::Progress> newProgress(const QString &title) const;
    /// After another project or map was opened or stored, a database connected or closed, or a recent list cleared.
    std::function<void()> changed;

private:
    void databaseConnected(const QString &path) override;
    bool connect(const QString &machinePath);
    void closeDatabase(const tarnwick::Message &failure);
    void load(tarnwick::OptionFile &options);
    /// Changes a recent list, which other running windows keep in the same file.
    void change(tarnwick::OptionFile &recent, const std::function<void()> &change);
    void notify();
    void noteMapFile(const tarnwick::Message &status);

    QString componentFolder() const;

    tarnwick::UserPrompts &m_prompts;
    std::unique_ptr<brannock::Project> m_project;
    QByteArray m_componentStamp; ///< of the files that the present component was read from
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

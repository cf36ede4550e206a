#pragma once
#include "PanelTexts.h"
#include "RecentFiles.h"

#include <brannock/SystemOption.h>
#include <db/revision/ConnectDatabase.h>
#include <plans/MapUndo.h>
#include <plans/ProjectQueries.h>
#include <query/ArvoOptions.h>
#include <tarnwick/Progress.h>

namespace app {

/// The open project with everything that belongs to it: component, database, legend, undo, options and recent lists.
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

    plans::MapLegend &legend() { return m_legend; }
    plans::MapUndo &undo() { return m_undo; }
    /// The map's file in the suite's form of paths; empty for a new map.
    QString mapFile;

    tarnwick::UserPrompts &prompts() { return m_prompts; }
    db::DatabaseSession &database() { return m_database; }
    DatabaseStatus databaseStatus() const;
    plans::ProjectQueries &queries() { return m_queries; }
    query::QueryContext &queryContext() { return m_queryContext; }
    query::ArvoOptions &options() { return m_options; }
    tarnwick::PathRoots roots() const;
    tarnwick::JMacro systemMacros() const;

    /// Folders of this machine, most recent first.
    const QStringList &recentProjects() const { return m_system.recentProjects; }
    /// Of the project, in the suite's form of paths.
    RecentFiles::Lists recentFiles() const { return m_recent.lists(m_project->folder); }
    void clearRecentProjects();
    void clearRecentDatabases();
    void clearRecentMaps();

    // Commands on the database. What fails is said.
    bool connectDatabase(const QString &machinePath);
    bool createDatabase(const QString &machinePath);
    void closeDatabase();
    /// Asks first.
    void uploadComponent();
    /// The end of the program: closes the database.
    void end();

    /// The present component is about to go: nothing may look at it any more.
    std::function<void()> replacing;
    /// After another project was opened, a database connected or closed, or a recent list cleared.
    std::function<void()> changed;
    /// Another project stands in the place of the one before; its database is about to be connected.
    std::function<void()> replaced;
    /// Makes what shows work that may take long, and lets the user stop it; its title is given. None: nobody watches.
    std::function<std::unique_ptr<tarnwick::Progress>(const QString &title)> makeProgress;

private:
    void databaseConnected(const QString &path) override;
    std::unique_ptr<tarnwick::Progress> newProgress(const QString &title) const;
    void closeDatabase(const tarnwick::Message &failure);
    void load(tarnwick::OptionFile &options);
    void store(tarnwick::OptionFile &options);
    void notify();

    tarnwick::UserPrompts &m_prompts;
    std::unique_ptr<brannock::Project> m_project;
    plans::MapLegend m_legend;
    plans::MapUndo m_undo;
    brannock::SystemOption m_system;
    query::ArvoOptions m_options;
    RecentFiles m_recent;
    query::QueryContext m_queryContext;
    db::DatabaseSession m_database;
    plans::ProjectQueries m_queries;
};

} // namespace app

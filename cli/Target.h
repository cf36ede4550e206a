#pragma once
#include "Arguments.h"
#include "Console.h"

#include <app/logic/MapDocument.h>
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <plans/MapHost.h>
#include <plans/MapLegend.h>
#include <plans/ProjectQueries.h>
#include <query/ArvoOptions.h>
#include <query/ParameterResolver.h>
#include <tarnwick/FailureLog.h>

namespace cli {

/// The answers that --yes, --no and --answers give, or --convert. Throws UsageError.
QList<tarnwick::Answer> answersOf(const Arguments &arguments);
/// The prompts of a command: its answers, and how much it says. Throws UsageError.
ConsolePrompts consolePromptsOf(const Arguments &arguments);

/// Takes the values of parameters from "--param NAME=VALUE"; a parameter that has none afterwards refuses the query. A
/// value that the window remembers is named, but not taken: a run must not depend on what somebody typed last.
class FlagParameters : public query::ParameterPrompt
{
public:
    /// Throws UsageError for a text without "=".
    FlagParameters(const QStringList &assignments, tarnwick::UserPrompts &prompts);
    bool confirm(const QString &queryName, QList<query::ParameterEntry> &entries,
                 query::QueryContext &context) override;

private:
    QHash<QString, QString> m_values; ///< by lower-case name
    tarnwick::UserPrompts *m_prompts;
};

/// What a command works on: a project's folder, or a database file alone. The command line's counterpart of the main
/// window.
class Target : public plans::MapHost
{
public:
    enum class Takes { Project, ProjectOrDatabase };

    /// Loads the project; opens no database yet. Throws tarnwick::Error.
    Target(const QString &path, const Arguments &arguments, Takes takes);

    bool hasProject() const { return m_project.isLoaded(); }
    /// The machine path of a file that an argument names, by the rule of all commands: the name is taken from the
    /// current folder, as everywhere in a shell; one with a backslash, or that begins with [PALOMINE_DIR], is a path of
    /// the suite and is taken from the project's folder. What exists where makes no difference.
    QString pathOf(const QString &argument) const;
    /// The database of --database, of the project, or the file itself.
    const QString &databasePath() const { return m_databasePath; }
    enum class Use {
        Read,   ///< the database is neither brought up to date nor written to
        Change, ///< it is brought up to date
        Import, ///< the same; the tables of a foreign database are taken over
        Store   ///< the same as Import; a project's own that is missing is made first
    };
    /// Connects to the database. False when that failed (which has then been said).
    bool connect(Use use = Use::Change);
    query::QueryContext &queryContext() { return m_context; }

    /// The program-wide options; defaults where their file cannot be read, which has been said.
    const query::ArvoOptions &options() const { return m_options; }

    /// Header, description and file of the map.
    app::MapDocument &map() { return m_map; }

    /// What was said last and how often an error was shown; what is to be said goes through prompts().
    const ConsolePrompts &console() const { return m_console; }

    brannock::Project &project() override { return m_project; }
    ellery::SteamGen &steamGen() override { return m_project.steamGen; }
    plans::MapLegend &legend() override { return m_legend; }
    db::DatabaseSession &session() override { return m_session; }
    tarnwick::UserPrompts &prompts() override { return m_prompts; }
    plans::QuerySource &queries() override { return m_queries; }
    void undoCheckpoint(const QString &) override {}
    void redrawMap() override {}
    void refreshLegend() override {}
    tarnwick::JMacro systemMacros() override;
    tarnwick::JMacro userMacros() override { return m_context.userMacros; }

private:
    ConsolePrompts m_console;
    tarnwick::LoggedPrompts m_prompts;
    brannock::Project m_project;
    db::DatabaseSession m_session;
    plans::MapLegend m_legend;
    app::MapDocument m_map;
    FlagParameters m_parameters;
    query::QueryContext m_context;
    plans::ProjectQueries m_queries;
    QString m_databasePath;
    query::ArvoOptions m_options;
    int m_formatYear = 0; ///< the program's option for new databases
};

} // namespace cli

#pragma once
#include "Arguments.h"
#include "Console.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <map/FillRunner.h>
#include <map/MapDocument.h>
#include <plans/ProjectQueries.h>
#include <query/ArvoOptions.h>
#include <query/ParameterResolver.h>
#include <tarnwick/FailureLog.h>

namespace cli {

/// The answers given by --yes, --no and --answers, or --convert. Throws UsageError.
QList<tarnwick::Answer> answersOf(const Arguments &arguments);
/// The prompts of a command, with its answers and its verbosity. Throws UsageError.
ConsolePrompts consolePromptsOf(const Arguments &arguments);

/// Sets parameters from "--param NAME=VALUE". If a parameter has no value afterwards, the query is refused. A value
/// remembered by the window is mentioned but not used: the result must not depend on previous runs.
class FlagParameters : public query::ParameterPrompt
{
public:
    /// Throws UsageError for a text without "=".
    FlagParameters(const QStringList &assignments, tarnwick::UserPrompts &prompts);
    bool confirm(const QString &queryName, QList<query::ParameterEntry> &entries,
                 query::QueryContext &context) override;

private:
    QHash<QString, QString> m_values; ///< by name in lower case
    tarnwick::UserPrompts *m_prompts;
};

/// The object of a command: a project's folder, or a single database file. Corresponds to the main window.
class Target
{
public:
    enum class Takes { Project, ProjectOrDatabase };

    /// Loads the project; does not open the database. Throws tarnwick::Error.
    Target(const QString &path, const Arguments &arguments, Takes takes);

    bool hasProject() const { return m_project.isLoaded(); }
    /// Machine path of a file argument; the rule is the same for all commands. A name is relative to the current
    /// folder, as usual in a shell. A name that contains a backslash or begins with [PALOMINE_DIR] is a suite path,
    /// relative to the project's folder. Whether files exist has no influence.
    QString pathOf(const QString &argument) const;
    /// The database given by --database, the project's, or the file itself.
    const QString &databasePath() const { return m_databasePath; }
    enum class Use {
        Read,   ///< neither brings the database up to date nor writes to it
        Change, ///< brings it up to date
        Import, ///< as Change, and imports the tables of a foreign database
        Store   ///< as Import, and creates the project's own database if it is missing
    };
    /// Connects to the database. Returns false after reporting the error.
    bool connect(Use use = Use::Change);
    query::QueryContext &queryContext() { return m_context; }

    /// The program's options; the defaults if their file cannot be read, which is reported.
    const query::ArvoOptions &options() const { return m_options; }

    /// The map of the project's component.
    map::MapDocument &map() { return m_map; }
    const map::FillRunner &fillRunner() const { return m_runner; }

    /// The console itself, for the last message and the number of errors. Use prompts() to report something.
    const ConsolePrompts &console() const { return m_console; }

    brannock::Project &project() { return m_project; }
    db::DatabaseSession &session() { return m_session; }
    tarnwick::UserPrompts &prompts() { return m_prompts; }
    tarnwick::JMacro systemMacros() const;
    const tarnwick::JMacro &userMacros() const { return m_context.userMacros; }

private:
    ConsolePrompts m_console;
    tarnwick::LoggedPrompts m_prompts;
    brannock::Project m_project;
    db::DatabaseSession m_session;
    map::MapDocument m_map;
    FlagParameters m_parameters;
    query::QueryContext m_context;
    plans::ProjectQueries m_queries;
    map::FillRunner m_runner;
    QString m_databasePath;
    query::ArvoOptions m_options;
    int m_formatYear = 0; ///< the program's option for new databases
};

} // namespace cli

#pragma once
#include "Arguments.h"
#include "Console.h"

#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <plans/MapHost.h>

namespace cli {

/// The answers that --yes, --no and --answers give. Throws UsageError.
QList<tarnwick::Answer> answersOf(const Arguments &arguments);

/// What a command works on: a project's folder, or a database file alone. The command line's counterpart of the main window.
class Target : public plans::MapHost
{
public:
    /// path: a project folder, or (where the command takes one) a database file. Loads the project; opens nothing yet.
    /// Throws tarnwick::Error.
    Target(const QString &path, const Arguments &arguments, bool databaseFileAllowed);

    bool hasProject() const { return m_project.isLoaded(); }
    /// The database of --database, of the project, or the file itself.
    const QString &databasePath() const { return m_databasePath; }
    /// Connects to the database, making it first when it is the project's own and missing and create is set. On failure the message
    /// has been shown and false is returned.
    bool connect(bool create);
    /// The project with its component; throws when the target is a database file alone.
    brannock::Project &requireProject();

    ConsolePrompts &console() { return m_prompts; }

    brannock::Project &project() override { return m_project; }
    ellery::SteamGen &steamGen() override { return m_project.steamGen; }
    db::DatabaseSession &session() override { return m_session; }
    tarnwick::UserPrompts &prompts() override { return m_prompts; }
    void undoCheckpoint(const QString &) override {}
    void redrawMap() override {}
    void refreshLegend() override {}
    tarnwick::JMacro systemMacros() override;
    tarnwick::JMacro userMacros() override { return {}; }

private:
    ConsolePrompts m_prompts;
    brannock::Project m_project;
    db::DatabaseSession m_session;
    QString m_databasePath;
};

} // namespace cli

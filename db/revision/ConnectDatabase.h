#pragma once
#include <brannock/Project.h>
#include <db/DatabaseSession.h>
#include <tarnwick/Progress.h>

namespace db {

/// Told when a connection stands: the window takes the path into its recent databases and refreshes its panels.
class ConnectionListener
{
public:
    virtual ~ConnectionListener() = default;
    virtual void databaseConnected(const QString &path) = 0;
};

/// What connecting needs of the program around it.
struct ConnectContext
{
    const brannock::Project *project = nullptr; ///< null without one
    ConnectionListener *listener = nullptr;     ///< null: nobody is told
    tarnwick::Progress *progress = nullptr;     ///< null: nobody watches
    bool onlyReads = false;                     ///< open the database for reading, as it is
    bool importsForeign = true;                 ///< take over the tables of a foreign database, which nobody is asked
};

/// Connects a database in place of the one that is open. It may be one of the present schema, whose views and aliases
/// are brought up to date; an older one, which is converted when the user agrees; one of the foreign inspection data
/// system, whose tables are imported; or a Jet file, of which a working copy is opened that can only be read, unless
/// the user agrees to have the file converted. One that is right already, or holds no table of a project, is not
/// written to.
///
/// Tells the listener and shows "Connected to ..." with the path relative to the project's arvo folder. An empty path
/// does nothing. An engine exception is reported (1032) and gives false, as does the user's Cancel; the session is then
/// closed. What was asked and done of a conversion stands in the session's ConversionState.
bool connectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context);

/// Creates the project's own database, and its arvo folder with it. False when that failed, which has been said.
bool createProjectDatabase(tarnwick::UserPrompts &prompts, const brannock::Project &project, int formatYear);

/// The database a project starts with: the most recent one, unless that is the project's own and its file is gone; else
/// the project's own; and when that does not exist either, it is created, connected, and announced in the status line.
/// recentDatabases are paths in the suite's form, most recent first. False when none could be connected; after the
/// user's Cancel none is tried any more.
bool connectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                    const ConnectContext &context);

} // namespace db

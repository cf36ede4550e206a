#pragma once
#include "CreateDatabase.h"
#include "DatabaseSession.h"

#include <brannock/Project.h>
#include <tarnwick/Progress.h>

namespace db {

/// Told when a connection stands: the window takes the path into its recent databases and refreshes its panels.
class ConnectionListener
{
public:
    virtual ~ConnectionListener() = default;
    virtual void databaseConnected(const QString &path) = 0;
};

struct ConnectContext;

/// Opens a database for the session and brings it up to date.
class DatabaseOpener
{
public:
    virtual ~DatabaseOpener() = default;
    /// Throws dao::DaoException when the session cannot be connected, and dao::DaoCancelled or tarnwick::Cancelled when
    /// the user did not want to wait.
    virtual void open(DatabaseSession &session, const QString &path, const ConnectContext &context) = 0;
};

/// What connecting needs of the program around it.
struct ConnectContext
{
    const brannock::Project *project = nullptr; ///< null without one
    ConnectionListener *listener = nullptr;     ///< null: nobody is told
    tarnwick::Progress *progress = nullptr;     ///< null: nobody watches
    DatabaseOpener *opener = nullptr;           ///< null: the file is opened as it is, with its views and aliases
};

/// Opens the database for the main window, through the context's opener, in place of the one that is open, tells the
/// listener and shows "Connected to ..." with the path relative to the project's arvo folder. An empty path does
/// nothing. An engine exception is reported (1032) and gives false; the session is then closed.
bool connectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context);

/// The database a project starts with: the most recent one, unless that is the project's own and its file is gone; else
/// the project's own; and when that does not exist either, it is created, connected, and announced in the status line.
/// recentDatabases are paths in the suite's form, most recent first. False when none could be connected.
bool connectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                    const ConnectContext &context);

/// True for a database of the foreign inspection data system: a table EXAMDATA and no table report.
bool isLegacyDatabase(const dao::Database &database);

} // namespace db

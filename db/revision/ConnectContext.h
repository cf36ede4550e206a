#pragma once
#include <brannock/Project.h>
#include <tarnwick/base/Progress.h>

namespace db {

/// Called when a connection is established. The window adds the path to its recent databases and refreshes its panels.
class ConnectionListener
{
public:
    virtual ~ConnectionListener() = default;
    virtual void databaseConnected(const QString &path) = 0;
};

/// References that connecting uses.
struct ConnectContext
{
    const brannock::Project *project = nullptr; ///< null if there is none
    ConnectionListener *listener = nullptr;     ///< may be null
    tarnwick::Progress *progress = nullptr;     ///< may be null
    bool onlyReads = false;                     ///< open the database read-only and unchanged
    bool importsForeign = true;                 ///< import the tables of a foreign database; no question is asked
};

} // namespace db

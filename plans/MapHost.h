#pragma once
#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>
#include <ellery/TubeStates.h>
#include <tarnwick/base/Progress.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/Prompts.h>

namespace brannock {
class Project;
}

namespace plans {

class MapLegend;
class QuerySource;

/// What fills, plans and dialogs need of the main window. The window implements it; tests and the command line have
/// their own.
class MapHost
{
public:
    virtual ~MapHost() = default;

    virtual brannock::Project &project() = 0;
    virtual const ellery::SteamGen &steamGen() = 0;
    virtual ellery::TubeStates &tubes() = 0;
    virtual MapLegend &legend() = 0;
    virtual db::DatabaseSession &session() = 0;
    virtual tarnwick::UserPrompts &prompts() = 0;
    virtual QuerySource &queries() = 0;
    /// Taken before a change so that it can be undone; the Edit menu then reads "Undo <label>".
    virtual void undoCheckpoint(const QString &label) = 0;
    virtual void redrawMap() = 0;
    virtual void refreshLegend() = 0;
    /// The system macros ("[MAP NAME]", ...), rebuilt.
    virtual tarnwick::JMacro systemMacros() = 0;
    virtual tarnwick::JMacro userMacros() = 0;
    /// The wait cursor: on before long work, off after it. Calls nest.
    virtual void setBusy(bool) {}
};

/// The wait cursor for as long as it lives.
class BusyCursor
{
public:
    explicit BusyCursor(MapHost &host)
        : m_host(host)
    {
        m_host.setBusy(true);
    }
    ~BusyCursor() { m_host.setBusy(false); }
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;

private:
    MapHost &m_host;
};

} // namespace plans

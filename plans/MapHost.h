#pragma once
#include <db/DatabaseSession.h>
#include <ellery/SteamGen.h>
#include <tarnwick/JMacro.h>
#include <tarnwick/Prompts.h>

namespace brannock {
class Project;
}

namespace plans {

/// What fills, plans and dialogs need of the main window. The window implements it; tests and the command line have their own.
class MapHost
{
public:
    virtual ~MapHost() = default;

    virtual brannock::Project &project() = 0;
    virtual ellery::SteamGen &steamGen() = 0;
    virtual db::DatabaseSession &session() = 0;
    virtual tarnwick::UserPrompts &prompts() = 0;
    /// Taken before a change so that it can be undone; the Edit menu then reads "Undo <label>".
    virtual void undoCheckpoint(const QString &label) = 0;
    virtual void redrawMap() = 0;
    virtual void refreshLegend() = 0;
    /// The system macros ("[MAP NAME]", ...), rebuilt.
    virtual tarnwick::JMacro systemMacros() = 0;
    virtual tarnwick::JMacro userMacros() = 0;
};

} // namespace plans

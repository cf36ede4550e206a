#pragma once
#include <app/logic/WindowConditions.h>

namespace brannock {
class TubesheetMap;
}

namespace app {

class ProjectSession;
class WindowCommands;

/// State of project, map and pointer for the conditions of commands.
CommandContext commandContext(const ProjectSession &session, const brannock::TubesheetMap &map,
                              const WindowCommands &commands);

} // namespace app

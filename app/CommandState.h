#pragma once
#include <app/logic/WindowConditions.h>

namespace brannock {
class TubesheetMap;
}

namespace app {

class ProjectSession;
class WindowCommands;

/// The present state of project, map and pointer, as the conditions of commands look at it.
CommandContext commandContext(const ProjectSession &session, const brannock::TubesheetMap &map,
                              const WindowCommands &commands);

} // namespace app

#include "CommandState.h"

#include "WindowCommands.h"

#include <brannock/gui/TubesheetMap.h>

namespace app {

CommandContext commandContext(const ProjectSession &session, const brannock::TubesheetMap &map,
                              const WindowCommands &commands)
{
    const map::MapDocument &document = session.map();
    const int pointed = commands.pointedTube;
    CommandContext context;
    context.hasProject = session.hasProject();
    context.hasSections = document.component().hasSections();
    context.hasEntries = document.count() > 0;
    context.canUndo = document.canUndo();
    context.canRedo = document.canRedo();
    context.hasPointedTube = pointed >= 0 && pointed < document.tubes().count();
    context.pointedTubeHasSymbol = context.hasPointedTube && !document.tubes().isOpen(pointed);
    context.hasPreviousView = map.hasPreviousView();
    context.hasNextView = map.hasNextView();
    return context;
}

} // namespace app

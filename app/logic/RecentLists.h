#pragma once
#include "ProjectSession.h"

#include <tarnwick/CommandHandlers.h>

namespace app {

/// Entries of the three menus of recent files. Their values are machine paths. An entry is disabled if its file does
/// not exist or its folder is not a project any more.
QList<tarnwick::CommandHandlers::ListEntry> recentProjectEntries(const ProjectSession &session);
QList<tarnwick::CommandHandlers::ListEntry> recentDatabaseEntries(const ProjectSession &session);
QList<tarnwick::CommandHandlers::ListEntry> recentMapEntries(const ProjectSession &session);

} // namespace app

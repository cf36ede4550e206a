#pragma once
#include "ProjectSession.h"

#include <tarnwick/CommandHandlers.h>

namespace app {

/// Entries of the three menus of recent files. Their values are paths of this machine. An entry whose file is gone, or
/// whose folder is a project no more, cannot be used.
QList<tarnwick::CommandHandlers::ListEntry> recentProjectEntries(const ProjectSession &session);
QList<tarnwick::CommandHandlers::ListEntry> recentDatabaseEntries(const ProjectSession &session);
QList<tarnwick::CommandHandlers::ListEntry> recentMapEntries(const ProjectSession &session);

} // namespace app

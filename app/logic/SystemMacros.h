#pragma once
#include "PanelTexts.h"

#include <tarnwick/JMacro.h>

namespace app {

/// The macros that the program itself defines, as they stand now: sorted. Those of a query are empty here and filled by
/// who runs one.
tarnwick::JMacro systemMacros(const brannock::Project &project, const ellery::TubeStates &tubes, const QString &mapFile,
                              const DatabaseStatus &database);

/// What texts of a printed map may hold: the user's macros, the system's, and "[CUR DATETIME]" as of now.
tarnwick::JMacro printMacros(const tarnwick::JMacro &system, const tarnwick::JMacro &user);

} // namespace app

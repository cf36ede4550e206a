#pragma once
#include "PanelTexts.h"

#include <tarnwick/JMacro.h>

namespace app {

/// The macros defined by the program with their present values, sorted. Those of a query are empty; running a query
/// sets them.
tarnwick::JMacro systemMacros(const brannock::Project &project, const ellery::TubeStates &tubes, const QString &mapFile,
                              const DatabaseStatus &database);

/// Macros of a printed map: the user's, the system's, and "[CUR DATETIME]".
tarnwick::JMacro printMacros(const tarnwick::JMacro &system, const tarnwick::JMacro &user);

} // namespace app

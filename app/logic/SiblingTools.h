#pragma once
#include <tarnwick/Paths.h>
#include <tarnwick/Prompts.h>

namespace app {

/// The suite's other programs lie beside each other in the installation's "bin" folder.
struct SiblingTool
{
    const char16_t *program;
};
inline constexpr SiblingTool kAdministrationTool{u"vantreth"};
inline constexpr SiblingTool kComponentMaker{u"ossory"};

/// The machine path of the tool, empty when it is not there.
QString findTool(const SiblingTool &tool, const tarnwick::PathRoots &roots);
/// Starts the tool in the project's folder. With wait set, returns when it has ended. False, and said why, when it
/// could not be started.
bool startTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, bool wait, tarnwick::UserPrompts &prompts);

} // namespace app

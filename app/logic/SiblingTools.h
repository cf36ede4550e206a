#pragma once
#include <tarnwick/base/Progress.h>
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
/// Starts the tool in the project's folder and returns at once. False, and said why, when it could not be started.
bool startTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts);
/// The same, but returns when the tool has ended; meanwhile the window is painted but takes no input. Cancelling the
/// progress (which may be null) ends the waiting, not the tool. False, and said why, when the tool has not been started
/// or is still open.
bool runTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts,
             tarnwick::Progress *progress);

} // namespace app

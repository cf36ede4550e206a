#pragma once
#include <tarnwick/base/Progress.h>
#include <tarnwick/Paths.h>
#include <tarnwick/Prompts.h>

namespace app {

/// Other programs of the suite, in folder "bin" of the installation.
struct SiblingTool
{
    const char16_t *program;
};
inline constexpr SiblingTool kAdministrationTool{u"vantreth"};
inline constexpr SiblingTool kComponentMaker{u"ossory"};

/// Machine path of the tool; empty if it does not exist.
QString findTool(const SiblingTool &tool, const tarnwick::PathRoots &roots);
/// Starts the tool in the project's folder and returns at once. Returns false after reporting that it could not be
/// started.
bool startTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts);
/// As above, but waits until the tool has ended. Meanwhile the window is painted but takes no input. Cancelling
/// progress (may be null) ends the waiting, not the tool. Returns false after reporting that the tool could not be
/// started or is still open.
bool runTool(const SiblingTool &tool, const tarnwick::PathRoots &roots, tarnwick::UserPrompts &prompts,
             tarnwick::Progress *progress);

} // namespace app

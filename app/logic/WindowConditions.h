#pragma once
#include <tarnwick/CommandTable.h>

namespace app {

/// Conditions of the commands.
struct When
{
    enum Condition : int {
        Always = tarnwick::kAlways,
        Project,        ///< a project is loaded; every condition below needs one, too
        Sections,       ///< the component has sections
        Entries,        ///< the legend has entries
        CanUndo,        ///< there is a change to undo
        CanRedo,        ///< there is a change to redo
        PointedTube,    ///< the pop-up menu was opened on a tube
        PointedSymbol,  ///< ... that carries a symbol
        PointedSection, ///< ... of a component with sections
        ViewBefore,     ///< the map has an earlier view
        ViewAfter,      ///< ... or a later one
        Later = tarnwick::kNotYet,
    };
};

/// What the conditions look at.
struct CommandContext
{
    bool hasProject = false;
    bool hasSections = false;
    bool hasEntries = false;
    bool canUndo = false;
    bool canRedo = false;
    bool hasPointedTube = false;
    bool pointedTubeHasSymbol = false;
    bool hasPreviousView = false;
    bool hasNextView = false;
};
/// Why a condition does not hold, in a sentence for the user; empty when it holds.
QString whyNot(int condition, const CommandContext &context);

} // namespace app

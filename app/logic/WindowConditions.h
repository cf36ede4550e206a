#pragma once
#include <tarnwick/CommandTable.h>

namespace app {

/// Conditions of the commands.
struct When
{
    enum Condition : int {
        Always = tarnwick::kAlways,
        Project,        ///< a project is loaded; also required by all conditions below
        Sections,       ///< the component has sections
        Entries,        ///< the legend has entries
        CanUndo,        ///< there is a change to undo
        CanRedo,        ///< there is a change to redo
        PointedTube,    ///< the pop-up menu was opened on a tube
        PointedSymbol,  ///< ... with a symbol
        PointedSection, ///< ... of a component with sections
        ViewBefore,     ///< the map has an earlier view
        ViewAfter,      ///< ... or a later one
        Later = tarnwick::kNotYet,
    };
};

/// Input of the conditions.
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
/// Sentence for the user why a condition does not hold; empty if it holds.
QString whyNot(int condition, const CommandContext &context);

} // namespace app

#pragma once
#include "FormatList.h"
#include "QueryHistoryList.h"

#include <functional>
#include <tarnwick/JMacro.h>

namespace query {

class ParameterPrompt;

/// What running queries needs of the program around it. One object lives as long as the program; the window, the
/// command line and tests fill it in.
struct QueryContext
{
    tarnwick::PathRoots roots;
    tarnwick::JMacro userMacros;
    /// The system macros ("[MAP NAME]", ...), rebuilt by each call; none when empty.
    std::function<tarnwick::JMacro()> systemMacros;
    QueryHistoryList history;
    FormatList formats;
    /// Shows the parameters of a query to the user. Null: their values are taken as they are found.
    ParameterPrompt *prompt = nullptr;
    /// Set while the map's fills are run again: a query whose parameters all have values then runs without asking.
    bool quiet = false;

    tarnwick::JMacro currentSystemMacros() const { return systemMacros ? systemMacros() : tarnwick::JMacro(); }
};

} // namespace query

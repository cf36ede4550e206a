#pragma once
#include "FormatList.h"
#include "QueryHistoryList.h"

#include <functional>
#include <tarnwick/JMacro.h>

namespace query {

class ParameterPrompt;

/// Settings and services used by running queries. One object for the lifetime of the program; the window, the command
/// line and tests fill it in.
struct QueryContext
{
    tarnwick::PathRoots roots;
    tarnwick::JMacro userMacros;
    /// Returns the system macros ("[MAP NAME]", ...), rebuilt by each call. If empty, there are none.
    std::function<tarnwick::JMacro()> systemMacros;
    QueryHistoryList history;
    FormatList formats;
    /// Shows the parameters of a query to the user. If null, their values are used as found.
    ParameterPrompt *prompt = nullptr;
    /// Set while the map's fills are run again: a query whose parameters all have values then runs without asking.
    bool quiet = false;

    tarnwick::JMacro currentSystemMacros() const { return systemMacros ? systemMacros() : tarnwick::JMacro(); }
};

} // namespace query

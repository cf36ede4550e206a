#pragma once
#include "Arguments.h"
#include "Target.h"

#include <brannock/ReportProblems.h>

namespace cli {

/// Prints the numbers of a file that was checked, and its problems; of a long list the first ones.
void printChecked(const brannock::FileOutcome &outcome);

/// Writes the file of --problems, and prints the outcomes if they are wanted as JSON. Call once, at the end.
void finishOutcomes(Target &target, const Arguments &arguments, const QList<brannock::FileOutcome> &outcomes);

} // namespace cli

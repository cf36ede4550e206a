#pragma once
#include "Target.h"

namespace cli {

/// The machine path of a file that an argument names, to be written. Error when its folder is not there.
QString placeToWrite(const Target &target, const QString &argument);
/// UsageError when the file for tubes has another ending than ".csv".
void checkTubesEnding(const QString &argument);
/// Writes tubes as text to the file that the argument of --tubes names.
void writeTubes(const Target &target, const QString &argument, const QString &text);

} // namespace cli

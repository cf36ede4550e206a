#pragma once
#include "Target.h"

namespace cli {

/// Machine path of a file argument that will be written. Throws Error if its folder does not exist.
QString placeToWrite(const Target &target, const QString &argument);
/// Throws UsageError if the tubes file has an extension other than ".csv".
void checkTubesEnding(const QString &argument);
/// Writes tubes as text to the file given by --tubes.
void writeTubes(const Target &target, const QString &argument, const QString &text);

} // namespace cli

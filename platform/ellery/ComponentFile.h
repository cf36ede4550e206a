#pragma once
#include "SteamGen.h"

namespace ellery {

/// Highest number of a section, row or column that the suite's tables and files accept.
constexpr int kMaxTubeNumber = 999;

/// Reads a component: a folder with component.json (name, model, pitch, axis names, leg labels, landmark sets),
/// tubes.txt, and where it has them labels.txt, landmarks.txt and marks.txt: tab-separated tables that a spreadsheet
/// can make; docs/file-formats.md describes them. Throws tarnwick::FileError with file, line and reason: a missing
/// column, a number out of 0..999, a tube, label or landmark that stands twice (both lines are named).
SteamGen readComponent(const QString &folder);
/// Writes the files. labels.txt, landmarks.txt and marks.txt that have become empty are removed.
void writeComponent(const SteamGen &steamGen, const QString &folder);

} // namespace ellery

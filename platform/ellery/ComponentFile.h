#pragma once
#include "SteamGen.h"

namespace ellery {

/// Highest number of a section, row or column that the suite's tables and files accept.
constexpr int kMaxTubeNumber = 999;

/// Reads a component: a folder with component.json (name, model, pitch, axis names, leg labels, landmark sets) and
/// tubes.txt, and optionally labels.txt, landmarks.txt and marks.txt. These are tab-separated tables that a spreadsheet
/// can write; docs/file-formats.md describes them. Throws tarnwick::FileError with file, line and reason: a missing
/// column, a number outside 0..999, a repeated tube, label or landmark (with both lines).
SteamGen readComponent(const QString &folder);
/// Writes the files. If labels.txt, landmarks.txt or marks.txt would be empty, it is removed.
void writeComponent(const SteamGen &steamGen, const QString &folder);

} // namespace ellery

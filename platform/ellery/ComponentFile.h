#pragma once
#include "SteamGen.h"

namespace ellery {

/// Reads a component: a folder with component.json (name, model, pitch, axis names, leg labels), tubes.txt, labels.txt and
/// landmarks.txt, tab-separated tables that a spreadsheet can make; docs/file-formats.md describes them.
/// Throws tarnwick::FileError with file, line and reason: a missing column, a number out of 0..999, a tube that stands twice.
SteamGen readComponent(const QString &folder);
void writeComponent(const SteamGen &steamGen, const QString &folder);

} // namespace ellery

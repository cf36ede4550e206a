#pragma once
#include <tarnwick/FileStatusList.h>

namespace tarnwick {

class JTableWin;

/// A table of the files that a dialog works through: four rows high, numbered "ENTRY#". choose is called with the index
/// when the user makes another file current. Detach the table by setSource(nullptr) before the list is destroyed.
JTableWin *makeFileStatusTable(FileStatusList &files, UserPrompts &prompts, const QString &accessibleName,
                               const std::function<void(int)> &choose);

} // namespace tarnwick

#pragma once
#include <QString>

namespace tarnwick {

// Temporary files and folders have the process number in their name, so that a later run can identify those of a killed
// process.

/// Removes what killed programs left directly in this folder: files and folders of temporaryNameFor(), and journals. On
/// a file system that may be shared with other machines, whose processes are not visible here, only files older than a
/// day are removed. Files that cannot be removed are skipped.
void removeLeftovers(const QString &folder);
/// Does the same in this folder and below it, as deep as project folders are.
void removeLeftoversBelow(const QString &folder);

/// Name pattern of a temporary working folder, for QTemporaryDir.
QString workFolderPattern();
/// Removes this user's working folders left by killed programs.
void removeWorkFolders();

} // namespace tarnwick

#pragma once
#include <QString>

namespace tarnwick {

// Files and folders that stand only while a program works on them bear the number of its process, so that a later run
// can tell what a killed one left behind.

/// Removes what killed programs left directly in that folder: files of temporaryNameFor() with their journals. On a
/// file system that other machines may share, only what is older than a day, since their processes cannot be seen from
/// here. What cannot be removed stays.
void removeLeftovers(const QString &folder);
/// The same in that folder and below it, as deep as a project's folders are.
void removeLeftoversBelow(const QString &folder);

/// For QTemporaryDir: the pattern of a working folder among the system's temporary ones.
QString workFolderPattern();
/// Removes this user's working folders of killed programs.
void removeWorkFolders();

} // namespace tarnwick

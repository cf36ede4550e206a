#pragma once
#include <QString>

namespace tarnwick {

/// An unused name in the folder of the wanted file, for that file while it is being written: "arvo-PROCESS-NUMBER.new".
/// It is short, since the wanted name may already have the maximum length. Names of dangling links count as used. The
/// first call for a folder removes such files left there by killed processes, with their journals.
QString temporaryNameFor(const QString &wanted);

/// Removes an unfinished file and the journal that a database may have beside it.
void removeUnfinished(const QString &path);

/// Flushes a file to the disk. Returns false, with errno set, if that failed.
bool syncFile(int descriptor);

/// Flushes the folder of a file, so that a new name is on the disk before anything depends on it. Not every file system
/// supports this, and the file is complete in either case, so a failure is ignored.
void syncFolderOf(const QString &path);

/// Failure injection for tests: syncFile() fails as on a broken disk.
void failSyncs(bool fail);

} // namespace tarnwick

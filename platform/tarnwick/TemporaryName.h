#pragma once
#include <QString>

namespace tarnwick {

/// A free name in the folder of the wanted file, for that file while it is being made: "arvo-PROCESS-NUMBER.new", short
/// since the wanted name may be as long as a name can be. Nothing bears it, not even a link that leads nowhere. The
/// first call for a folder removes the files of that kind that killed processes have left there, with their journals.
QString temporaryNameFor(const QString &wanted);

/// Removes an unfinished file, and the journal that a database may have beside it.
void removeUnfinished(const QString &path);

/// Has the system write what it holds of a file to the disk. False, with errno set, when that failed.
bool syncFile(int descriptor);

/// The same for the folder of a file, so that a new name is on the disk before anything is built on it. Not every file
/// system knows of such a step, and the file is whole either way: a failure does not count.
void syncFolderOf(const QString &path);

/// For tests of failures: syncFile() fails as on a broken disk.
void failSyncs(bool fail);

} // namespace tarnwick

#pragma once
#include <QString>

namespace app {

/// Kinds of files that the program opens.
enum class FileKind { Project, Database, Map, Query, Report, Plan, TubeList, ForeignText, Unknown };

/// Kind of an existing file or folder: by the first bytes if it is a record file or a database, otherwise by name. A
/// folder is a project. A text without an ending of its own is a tube list in the folder tube_lists, otherwise a text
/// of another system.
FileKind fileKind(const QString &path);

/// Folder of the project that a file or folder is in: the nearest one above it. Empty if it is in none.
QString projectOf(const QString &path);

} // namespace app

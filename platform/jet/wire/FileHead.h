#pragma once
#include <QString>

namespace jet::wire {

/// Kind of file according to its first bytes.
enum class FileHead {
    Unreadable, ///< the file does not exist or may not be read
    Other,
    Jet3,
    Jet4,
    Newer ///< the format of Access 2007 and later, or an unknown version
};
FileHead fileHead(const QString &path);

} // namespace jet::wire

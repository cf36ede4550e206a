#pragma once
#include <QString>

namespace jet::wire {

/// What a file's first bytes say it is.
enum class FileHead {
    Unreadable, ///< there is no such file, or no right to read it
    Other,
    Jet3,
    Jet4,
    Newer ///< the format of Access 2007 and later, or an unknown version
};
FileHead fileHead(const QString &path);

} // namespace jet::wire

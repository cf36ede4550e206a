#pragma once
#include <QString>

namespace db {

/// What shows that another program has a Jet file open.
struct JetUse
{
    /// Looks at the file, and at the lock file that programs keep beside it while they have it open. Both are only
    /// read; no database connection of this program may be open on either.
    explicit JetUse(const QString &jetFile);
    bool isInUse() const { return isLocked || !lockFile.isEmpty(); }

    QString lockFile;      ///< empty without one; it may be what a program left behind that came to a bad end
    bool isLocked = false; ///< a program holds a lock on either of them now
};

} // namespace db

#pragma once
#include <functional>
#include <memory>
#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <tarnwick/Progress.h>

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

/// Waits until a file is free, as long as the user does, but not for ever; without a progress for a second. False when
/// that was in vain. Throws tarnwick::Cancelled.
bool waitUntil(const std::function<bool()> &isFree, tarnwick::Progress *progress);

/// Keeps other programs from changing a Jet file, and from opening it where they take locks, while it lives.
class JetLock
{
public:
    /// Waits (see waitUntil()) while another program holds a lock on the file. Throws dao::DaoException: 3045 when the
    /// lock stays, 3051 when the file cannot be opened for writing; and tarnwick::Cancelled. A file system that knows
    /// no locks is no hindrance.
    explicit JetLock(const QString &jetFile, tarnwick::Progress *progress = nullptr);
    /// Through the lock's own descriptor: on some file systems no other may read a locked file. Throws
    /// dao::DaoException.
    void read(const std::function<void(QByteArrayView)> &take) const;

private:
    std::unique_ptr<QFile> m_file;
};

} // namespace db

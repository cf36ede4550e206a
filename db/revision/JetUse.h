#pragma once
#include <functional>
#include <memory>
#include <QByteArrayView>
#include <QFile>
#include <QString>
#include <tarnwick/base/Progress.h>

namespace db {

/// Detects that another program has a Jet file open.
struct JetUse
{
    /// Checks the file and the lock file that programs keep beside it while it is open. Both are only read. No database
    /// connection of this program may be open on either of them.
    explicit JetUse(const QString &jetFile);
    bool isInUse() const { return isLocked || !lockFile.isEmpty(); }

    QString lockFile;      ///< empty if there is none; may be left over from a program that crashed
    bool isLocked = false; ///< another program holds a lock on one of the two files
};

/// Waits until a file is free, up to a limit or until the user cancels; without a progress, for one second. Returns
/// false if the file is still in use. Throws tarnwick::Cancelled.
bool waitUntil(const std::function<bool()> &isFree, tarnwick::Progress *progress);

/// While it lives, other programs cannot change the Jet file, and cannot open it if they take locks.
class JetLock
{
public:
    /// Waits (see waitUntil()) while another program holds a lock on the file. Throws dao::DaoException (3045 if the
    /// lock is not released, 3051 if the file cannot be opened for writing) and tarnwick::Cancelled. If the file system
    /// does not support locks, continues without one. beforeEachTry may throw to end the wait: the program that holds
    /// the lock may have put another file in the place of this one.
    explicit JetLock(const QString &jetFile, tarnwick::Progress *progress = nullptr,
                     const std::function<void()> &beforeEachTry = {});
    /// Reads through the lock's own descriptor: on some file systems no other descriptor can read a locked file. Throws
    /// dao::DaoException.
    void read(const std::function<void(QByteArrayView)> &take) const;

private:
    std::unique_ptr<QFile> m_file;
};

} // namespace db

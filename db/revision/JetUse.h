#pragma once
#include <functional>
#include <memory>
#include <QByteArrayView>
#include <QFile>
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

/// Keeps other programs from changing a Jet file, and from opening it where they take locks, while it lives.
class JetLock
{
public:
    /// Throws dao::DaoException (3045) when another program holds a lock on the file, or 3051 when it cannot be opened
    /// for writing. A file system that knows no locks is no hindrance.
    explicit JetLock(const QString &jetFile);
    /// Through the lock's own descriptor: on some file systems no other may read a locked file. Throws
    /// dao::DaoException.
    void read(const std::function<void(QByteArrayView)> &take) const;

private:
    std::unique_ptr<QFile> m_file;
};

} // namespace db

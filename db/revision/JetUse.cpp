#include "JetUse.h"

#include "Backup.h"

#include <cerrno>
#include <dao/values/DaoException.h>
#include <dao/values/Errors.h>
#include <db/Messages.h>
#include <fcntl.h>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <tarnwick/base/Error.h>
#include <unistd.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

bool hasLock(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    struct flock lock = {};
    lock.l_type = F_WRLCK; // asks for conflicts with any other lock, shared or exclusive
    lock.l_whence = SEEK_SET;
    const bool isLocked = ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(descriptor);
    return isLocked;
}

/// Names written by other systems: upper and lower case are not distinguished.
QString lockFileOf(const QString &jetFile)
{
    const QFileInfo file(jetFile);
    const QString wanted = file.completeBaseName() + u".ldb"_s;
    const QDir folder = file.absoluteDir();
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden))
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return folder.filePath(name);
    return {};
}

} // namespace

JetUse::JetUse(const QString &jetFile)
    : lockFile(lockFileOf(jetFile))
    , isLocked(hasLock(jetFile) || (!lockFile.isEmpty() && hasLock(lockFile)))
{
}

bool waitUntil(const std::function<bool()> &isFree, tarnwick::Progress *progress)
{
    constexpr int kSecond = 1000;
    constexpr int kLockTimeout = 10 * 60 * kSecond;
    constexpr int kSleep = 20;
    constexpr int kSayAfter = 300;
    QElapsedTimer waited;
    for (waited.start(); !isFree();) {
        if (waited.hasExpired(progress ? kLockTimeout : kSecond))
            return false;
        if (progress && waited.hasExpired(kSayAfter))
            progress->waiting();
        if (progress && progress->cancelled())
            throw tarnwick::Cancelled();
        QThread::msleep(kSleep);
    }
    return true;
}

JetLock::JetLock(const QString &jetFile, tarnwick::Progress *progress, const std::function<void()> &beforeEachTry)
    : m_file(std::make_unique<QFile>(jetFile))
{
    if (!m_file->open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        throw dao::DaoException(
            dao::error::CannotOpenFile, u"DAO.Workspace"_s,
            u"The file '%1' cannot be opened: %2"_s.arg(QDir::toNativeSeparators(jetFile), m_file->errorString()));
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    const auto isTaken = [&] {
        if (beforeEachTry)
            beforeEachTry();
        return ::fcntl(m_file->handle(), F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
    };
    if (!waitUntil(isTaken, progress))
        throw dao::DaoException(dao::error::FileInUse, u"DAO.Workspace"_s,
                                dao::errorText(dao::error::FileInUse, {QDir::toNativeSeparators(jetFile)}));
}

void JetLock::read(const std::function<void(QByteArrayView)> &take) const
{
    m_file->seek(0);
    readRest(*m_file, take);
}

} // namespace db

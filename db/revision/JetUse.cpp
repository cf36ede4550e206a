#include "JetUse.h"

#include <fcntl.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
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
    lock.l_type = F_WRLCK; // what any other lock is in the way of
    lock.l_whence = SEEK_SET;
    const bool isLocked = ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(descriptor);
    return isLocked;
}

/// Written by other systems, which do not tell small letters from capitals.
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

} // namespace db

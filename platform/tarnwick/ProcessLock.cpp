#include "ProcessLock.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <QFile>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

/// The previous owner may have removed the file after this process opened it and before it was locked.
static bool isStillThere(int descriptor, const char *path)
{
    struct stat open
    {
    };
    struct stat named
    {
    };
    return ::fstat(descriptor, &open) == 0 && ::stat(path, &named) == 0 && open.st_ino == named.st_ino &&
           open.st_dev == named.st_dev;
}

ProcessLock::ProcessLock(const QString &path, int descriptor)
    : m_path(QFile::encodeName(path))
    , m_descriptor(descriptor)
{
}

ProcessLock::~ProcessLock()
{
    ::unlink(m_path.constData());
    ::close(m_descriptor);
}

std::unique_ptr<ProcessLock> ProcessLock::tryTake(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    for (;;) {
        const int descriptor = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
        if (descriptor < 0)
            throw FileError(path, 0, u"cannot be written: %1."_s.arg(QString::fromLocal8Bit(std::strerror(errno))));
        if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            const int cause = errno;
            ::close(descriptor);
            if (cause == EWOULDBLOCK)
                return nullptr;
            throw FileError(path, 0, u"cannot be locked: %1."_s.arg(QString::fromLocal8Bit(std::strerror(cause))));
        }
        if (isStillThere(descriptor, name.constData()))
            return std::unique_ptr<ProcessLock>(new ProcessLock(path, descriptor));
        ::close(descriptor);
    }
}

} // namespace tarnwick

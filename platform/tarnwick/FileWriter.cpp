#include "FileWriter.h"

#include "TemporaryName.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

static qint64 bytesUntilFailure = -1;

void failWritesAfter(qint64 bytes)
{
    bytesUntilFailure = bytes;
}

void makeFileSizeLimitAnError()
{
    // A handler instead of SIG_IGN, since child processes would inherit SIG_IGN.
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGXFSZ, &action, nullptr);
}

WriteError::WriteError(const QString &file, int systemError)
    : FileError(file, 0, u"cannot be written: %1."_s.arg(QString::fromLocal8Bit(std::strerror(systemError))))
    , m_isDiskFull(systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG)
{
}

// All writes of the program end here, without a buffer below.
static ssize_t systemWrite(int descriptor, const char *bytes, size_t count)
{
    if (bytesUntilFailure < 0)
        return ::write(descriptor, bytes, count);
    // A disk that becomes full accepts as much as it has room for.
    const size_t room = std::min(count, size_t(bytesUntilFailure));
    if (room == 0 && count > 0) {
        errno = ENOSPC;
        return -1;
    }
    const ssize_t written = ::write(descriptor, bytes, room);
    if (written > 0)
        bytesUntilFailure -= written;
    return written;
}

/// Returns false with errno set if not everything could be written.
static bool writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = systemWrite(descriptor, bytes.data(), size_t(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written == 0)
            errno = ENOSPC;
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

struct AtomicFile::Impl
{
    explicit Impl(const QString &wanted)
        : path(wanted)
    {
    }
    ~Impl()
    {
        if (descriptor >= 0)
            ::close(descriptor);
        if (isMade)
            removeUnfinished(temporary);
    }

    void create(const QString &rightsOf);
    void flush();
    void finish();
    [[noreturn]] void fail()
    {
        systemError = errno;
        throw WriteError(path, systemError);
    }

    QString path;
    QString temporary;
    QByteArray buffer;
    int descriptor = -1;
    int systemError = 0; ///< errno of the first failure; afterwards nothing more is written
    bool isMade = false;
};

// Only ordinary files are replaced, and links are not followed: otherwise a project from elsewhere could make the
// program overwrite any file of this user.
static void requireReplaceable(const QString &path, const struct stat &found)
{
    if (S_ISLNK(found.st_mode))
        throw FileError(path, 0,
                        u"cannot be written: it is a link to %1, and links are not followed."_s.arg(
                            QDir::toNativeSeparators(QFileInfo(path).symLinkTarget())));
    if (!S_ISREG(found.st_mode))
        throw FileError(path, 0, u"cannot be written: it is not an ordinary file."_s);
    if (::access(QFile::encodeName(path).constData(), W_OK) != 0)
        throw WriteError(path, errno);
}

void AtomicFile::Impl::create(const QString &rightsOf)
{
    struct stat found = {};
    const bool isThere = ::lstat(QFile::encodeName(path).constData(), &found) == 0;
    if (isThere)
        requireReplaceable(path, found);
    bool hasRights = isThere;
    if (!rightsOf.isEmpty())
        hasRights = ::stat(QFile::encodeName(rightsOf).constData(), &found) == 0;
    constexpr mode_t kAsUsual = 0666;
    constexpr mode_t kRights = 0777;
    const mode_t mode = hasRights ? found.st_mode & kRights : kAsUsual;
    temporary = temporaryNameFor(path);
    descriptor =
        ::open(QFile::encodeName(temporary).constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    if (descriptor < 0)
        fail();
    isMade = true;
    // On a file system without permissions this fails, and the file keeps the default ones.
    if (hasRights)
        (void)::fchmod(descriptor, mode);
}

void AtomicFile::Impl::flush()
{
    if (!writeAll(descriptor, buffer))
        fail();
    buffer.clear();
}

void AtomicFile::Impl::finish()
{
    flush();
    if (!syncFile(descriptor))
        fail();
    // Some file systems report write errors only on close().
    const int result = ::close(descriptor);
    descriptor = -1;
    if (result != 0 && errno != EINTR)
        fail();
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) != 0)
        fail();
    isMade = false;
    syncFolderOf(path);
}

// A folder of a project is created when its first file is written, but its parent is not: a project that has
// disappeared, for example with a removed drive, must not come back as an empty folder.
static void makeFolder(const QString &path)
{
    const QDir folder(QFileInfo(path).absolutePath());
    if (folder.exists())
        return;
    const QString parent = QFileInfo(folder.absolutePath()).absolutePath();
    if (!QFileInfo::exists(parent))
        throw FileError(path, 0, u"the folder %1 does not exist."_s.arg(QDir::toNativeSeparators(parent)));
    if (!QDir().mkdir(folder.absolutePath()))
        throw FileError(path, 0, u"the folder %1 cannot be made."_s.arg(QDir::toNativeSeparators(folder.path())));
}

AtomicFile::AtomicFile(const QString &path, const QString &rightsOf)
    : m_impl(std::make_unique<Impl>(path))
{
    makeFolder(path);
    m_impl->create(rightsOf);
}

AtomicFile::~AtomicFile() = default;

void AtomicFile::write(QByteArrayView bytes)
{
    constexpr qsizetype kFullBuffer = qsizetype(1) << 16;
    if (m_impl->systemError != 0)
        throw WriteError(m_impl->path, m_impl->systemError);
    m_impl->buffer.append(bytes);
    if (m_impl->buffer.size() >= kFullBuffer)
        m_impl->flush();
}

void AtomicFile::commit()
{
    if (m_impl->systemError != 0)
        throw WriteError(m_impl->path, m_impl->systemError);
    m_impl->finish();
}

void writeFileAtomically(const QString &path, const QByteArray &content)
{
    AtomicFile file(path);
    file.write(content);
    file.commit();
}

void appendLine(const QString &path, QByteArrayView line)
{
    makeFolder(path);
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (descriptor < 0)
        throw WriteError(path, errno);
    const auto close = qScopeGuard([descriptor] { ::close(descriptor); }); // also ends the lock
    while (::flock(descriptor, LOCK_EX) != 0) {
        if (errno != EINTR)
            throw WriteError(path, errno);
    }
    const off_t end = ::lseek(descriptor, 0, SEEK_END);
    char last = '\n';
    const bool isEnded = end == 0 || (::pread(descriptor, &last, 1, end - 1) == 1 && last == '\n');
    const QByteArray bytes = (isEnded ? QByteArray() : QByteArray("\n")) + line.toByteArray() + '\n';
    if (writeAll(descriptor, bytes) && syncFile(descriptor))
        return;
    const int systemError = errno;
    (void)!::ftruncate(descriptor, end); // no part of the line stays
    throw WriteError(path, systemError);
}

QByteArray readFile(const QString &path, qint64 limit)
{
    constexpr qint64 kChunk = qint64(1) << 20;

    QFile file(path);
    if (!file.exists())
        throw FileError(path, 0, u"does not exist."_s);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(path, 0, u"cannot be read: %1."_s.arg(file.errorString()));
    if (file.size() > limit)
        throw FileError(path, 0, u"is too large (%1 bytes)."_s.arg(file.size()));

    // Read in pieces, since the size of a device or pipe is not known in advance.
    QByteArray content;
    content.reserve(file.size());
    for (;;) {
        const QByteArray piece = file.read(kChunk);
        if (piece.isEmpty())
            break;
        content += piece;
        if (content.size() > limit)
            throw FileError(path, 0, u"is too large (more than %1 bytes)."_s.arg(limit));
    }
    if (file.error() != QFileDevice::NoError)
        throw FileError(path, 0, u"cannot be read: %1."_s.arg(file.errorString()));
    return content;
}

} // namespace tarnwick

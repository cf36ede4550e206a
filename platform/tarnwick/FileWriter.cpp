#include "FileWriter.h"

#include <cerrno>
#include <cstring>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace tarnwick {

using namespace Qt::StringLiterals;

static qint64 bytesUntilFailure = -1;

void failWritesAfter(qint64 bytes)
{
    bytesUntilFailure = bytes;
}

// What the system said last; the file's own text where it said nothing.
static QString reasonOf(const QFileDevice &file, int systemError)
{
    return systemError != 0 ? QString::fromLocal8Bit(std::strerror(systemError)) : file.errorString();
}

static FileError cannotWrite(const QFileDevice &file, int systemError)
{
    return FileError(file.fileName(), 0, u"cannot be written: %1."_s.arg(reasonOf(file, systemError)));
}

struct AtomicFile::Impl
{
    explicit Impl(const QString &path)
        : file(path)
    {
    }
    QSaveFile file;
    bool failed = false; ///< a write did; a part of it may stand in the file all the same
    int systemError = 0; ///< and why
};

// A folder of a project comes into being when the first file is put into it. What it lies in does not: a project that
// has gone, with a drive that was taken away say, must not come back as an empty shell.
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

AtomicFile::AtomicFile(const QString &path)
    : m_impl(std::make_unique<Impl>(path))
{
    makeFolder(path);
    errno = 0;
    if (!m_impl->file.open(QIODevice::WriteOnly))
        throw cannotWrite(m_impl->file, errno);
}

AtomicFile::~AtomicFile() = default;

void AtomicFile::write(const QByteArray &bytes)
{
    QSaveFile &file = m_impl->file;
    if (bytesUntilFailure >= 0) {
        if (bytes.size() > bytesUntilFailure) {
            bytesUntilFailure = 0;
            throw cannotWrite(file, ENOSPC);
        }
        bytesUntilFailure -= bytes.size();
    }
    errno = 0;
    if (file.write(bytes) != bytes.size()) {
        m_impl->failed = true;
        m_impl->systemError = errno;
        throw cannotWrite(file, m_impl->systemError);
    }
}

void AtomicFile::commit()
{
    QSaveFile &file = m_impl->file;
    if (m_impl->failed)
        throw cannotWrite(file, m_impl->systemError);
    errno = 0;
    // QSaveFile flushes to the disk before it renames.
    if (!file.commit())
        throw cannotWrite(file, errno);
}

void writeFileAtomically(const QString &path, const QByteArray &content)
{
    AtomicFile file(path);
    file.write(content);
    file.commit();
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

    // In pieces, since the size of a device or a pipe is not known before.
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

#include "FileWriter.h"

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

struct AtomicFile::Impl
{
    explicit Impl(const QString &path)
        : file(path)
    {
    }
    QSaveFile file;
};

AtomicFile::AtomicFile(const QString &path)
    : m_impl(std::make_unique<Impl>(path))
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder))
        throw FileError(path, 0, u"the folder %1 cannot be made."_s.arg(QDir::toNativeSeparators(folder)));
    if (!m_impl->file.open(QIODevice::WriteOnly))
        throw FileError(path, 0, u"cannot be written: %1."_s.arg(m_impl->file.errorString()));
}

AtomicFile::~AtomicFile() = default;

void AtomicFile::write(const QByteArray &bytes)
{
    QSaveFile &file = m_impl->file;
    if (bytesUntilFailure >= 0) {
        if (bytes.size() > bytesUntilFailure) {
            bytesUntilFailure = 0;
            throw FileError(file.fileName(), 0, u"cannot be written: No space left on device."_s);
        }
        bytesUntilFailure -= bytes.size();
    }
    if (file.write(bytes) != bytes.size())
        throw FileError(file.fileName(), 0, u"cannot be written: %1."_s.arg(file.errorString()));
}

void AtomicFile::commit()
{
    QSaveFile &file = m_impl->file;
    // QSaveFile flushes to the disk before it renames.
    if (!file.commit())
        throw FileError(file.fileName(), 0, u"cannot be written: %1."_s.arg(file.errorString()));
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

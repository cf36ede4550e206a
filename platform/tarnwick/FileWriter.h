#pragma once
#include "Error.h"

#include <memory>
#include <QByteArray>
#include <QString>

namespace tarnwick {

/// Writes a whole file beside the target, flushes it to the disk and lets it replace the target in one step, so that a
/// crash leaves the old file or the new one. Throws FileError, with the system's reason, and leaves the target as it
/// was. Its folder is made when it is missing, but not the one that the folder lies in.
void writeFileAtomically(const QString &path, const QByteArray &content);

/// The same for content made piece by piece; the writer may throw, then nothing is replaced.
class AtomicFile
{
public:
    explicit AtomicFile(const QString &path);
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;
    void write(const QByteArray &bytes);
    void commit();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

/// A file's bytes. Throws FileError; a file larger than limit is refused.
QByteArray readFile(const QString &path, qint64 limit = qint64(1) << 31);

/// For tests of failures: writes through the functions above fail once this many bytes have been written (-1: never).
void failWritesAfter(qint64 bytes);

} // namespace tarnwick

#pragma once
#include "Error.h"

#include <memory>
#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace tarnwick {

/// What the system said when a file could not be written.
class WriteError : public FileError
{
public:
    WriteError(const QString &file, int systemError);
    /// No room on the disk, or in what this user or process may use of it.
    bool isDiskFull() const { return m_isDiskFull; }

private:
    bool m_isDiskFull;
};

/// Writes a whole file beside the target, flushes it to the disk and lets it replace the target in one step, so that a
/// crash leaves the old file or the new one. Each step of the system is checked: when this returns, the file is on the
/// disk. Throws FileError, with the system's reason, and leaves the target as it was. Its folder is made when it is
/// missing, but not the one that the folder lies in. A link in the place of the target is refused, not followed.
void writeFileAtomically(const QString &path, const QByteArray &content);

/// The same for content made piece by piece; the writer may throw, then nothing is replaced.
class AtomicFile
{
public:
    /// The new file has the permissions of the one that it replaces, or those of the file rightsOf where that is given.
    explicit AtomicFile(const QString &path, const QString &rightsOf = {});
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;
    // Throw FileError; after a failure nothing more is written, and commit() fails with the same reason.
    void write(QByteArrayView bytes);
    void commit();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

/// A file's bytes. Throws FileError; a file larger than limit is refused.
QByteArray readFile(const QString &path, qint64 limit = qint64(1) << 31);

/// A file that would grow beyond the limit that the process was given (RLIMIT_FSIZE) is an error of that write, and
/// does not end the program without a word. For main().
void makeFileSizeLimitAnError();

/// For tests of failures: the system takes this many bytes more, and then its disk is full (-1: never).
void failWritesAfter(qint64 bytes);

} // namespace tarnwick

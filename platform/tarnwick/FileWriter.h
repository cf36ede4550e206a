#pragma once
#include "base/Error.h"

#include <memory>
#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace tarnwick {

/// A file could not be written; holds the reason given by the system.
class WriteError : public FileError
{
public:
    WriteError(const QString &file, int systemError);
    /// Returns true if the disk is full or the quota or file size limit of this user or process is reached.
    bool isDiskFull() const { return m_isDiskFull; }

private:
    bool m_isDiskFull;
};

/// Writes a whole file beside the target, flushes it to the disk and replaces the target in one step, so that after a
/// crash either the old or the new file is there. Every system call is checked: when this returns, the file is on the
/// disk. Throws FileError with the system's reason; the target is then unchanged. A missing folder is created, but not
/// its parent. If the target is a link, it is refused.
void writeFileAtomically(const QString &path, const QByteArray &content);

/// Writes content that is produced piece by piece, with the guarantees of writeFileAtomically(). If an exception ends
/// the writing, nothing is replaced.
class AtomicFile
{
public:
    /// The new file gets the permissions of the file it replaces, or those of rightsOf if given.
    explicit AtomicFile(const QString &path, const QString &rightsOf = {});
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;
    // Throw FileError. After a failure nothing more is written, and commit() fails with the same reason.
    void write(QByteArrayView bytes);
    void commit();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

/// Adds a line to a file that only grows, such as a log, and flushes it to the disk. Several programs may add lines at
/// the same time. If a program was killed while it wrote its line, that line is ended first. Throws FileError; the file
/// is then unchanged.
void appendLine(const QString &path, QByteArrayView line);

/// Reads a file. Throws FileError, also if the file is larger than limit.
QByteArray readFile(const QString &path, qint64 limit = qint64(1) << 31);

/// Makes a write beyond the process's file size limit (RLIMIT_FSIZE) fail with an error instead of terminating the
/// program. For main().
void makeFileSizeLimitAnError();

/// Failure injection for tests: the disk is full after this many more bytes (-1: never).
void failWritesAfter(qint64 bytes);

} // namespace tarnwick

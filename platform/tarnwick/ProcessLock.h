#pragma once
#include "base/Error.h"

#include <memory>
#include <QString>

namespace tarnwick {

/// A lock file. The system releases the lock when the process ends for any reason; host names and process numbers are
/// not used. The destructor removes the file.
class ProcessLock
{
public:
    /// Returns null if another process holds the lock. Throws FileError if the file cannot be created.
    static std::unique_ptr<ProcessLock> tryTake(const QString &path);
    ~ProcessLock();
    ProcessLock(const ProcessLock &) = delete;
    ProcessLock &operator=(const ProcessLock &) = delete;

private:
    ProcessLock(const QString &path, int descriptor);

    QByteArray m_path;
    int m_descriptor;
};

} // namespace tarnwick

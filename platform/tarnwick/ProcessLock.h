#pragma once
#include "Error.h"

#include <memory>
#include <QString>

namespace tarnwick {

/// A lock file. The system frees it when its process ends, however that happens, and neither the machine's name nor
/// numbers of processes count. Removed with the object.
class ProcessLock
{
public:
    /// Null when another process holds it. Throws FileError when the file cannot be made.
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

#pragma once
#include <csignal>
#include <QtGlobal>
#include <sys/resource.h>

namespace support {

/// No file of this process can be written beyond that size while this lives: each write beyond it fails in the system
/// itself, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(qint64 size)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = rlim_t(size);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_before{};
};

} // namespace support

#include "Limits.h"

#include "Sanitizer.h"

#include <sys/resource.h>

namespace jet::confine {
namespace {

constexpr rlim_t kMegabyte = 1024 * 1024;
constexpr rlim_t kLeastSeconds = 15;
constexpr rlim_t kSecondsPerMegabyte = 1;
constexpr rlim_t kLeastMemory = 512 * kMegabyte;
// A value may be as long as the file. It is held as bytes, as text of twice the size, and in the output frame.
constexpr rlim_t kMemoryPerByte = 8;
// The file, the three standard streams, and the tables of a character set.
constexpr rlim_t kOpenFiles = 16;

void limit(decltype(RLIMIT_CPU) resource, rlim_t value)
{
    rlimit now{};
    if (getrlimit(resource, &now) != 0)
        return;
    if (now.rlim_max != RLIM_INFINITY && now.rlim_max < value)
        value = now.rlim_max;
    now.rlim_cur = now.rlim_max = value;
    setrlimit(resource, &now);
}

} // namespace

void setLimits(qint64 fileSize)
{
    const auto size = rlim_t(fileSize);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, kLeastSeconds + size / kMegabyte * kSecondsPerMegabyte);
    limit(RLIMIT_FSIZE, 0);
    if (kAddressSanitizer)
        return;
    limit(RLIMIT_NOFILE, kOpenFiles);
    limit(RLIMIT_NPROC, 0);
    limit(RLIMIT_AS, kLeastMemory + size * kMemoryPerByte);
}

} // namespace jet::confine

#include "Limits.h"

#include <sys/resource.h>

#if defined(__has_feature)
#define ARVO_HAS_FEATURE(feature) __has_feature(feature)
#else
#define ARVO_HAS_FEATURE(feature) 0
#endif

namespace jet::reader {
namespace {

// It maps terabytes at its start.
#ifdef __SANITIZE_ADDRESS__
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = ARVO_HAS_FEATURE(address_sanitizer);
#endif

constexpr rlim_t kMegabyte = 1024 * 1024;
constexpr rlim_t kLeastSeconds = 15;
constexpr rlim_t kSecondsPerMegabyte = 1;
constexpr rlim_t kLeastMemory = 512 * kMegabyte;
// A value may be as long as the file; it is held as bytes, as text of twice the size, and in the frame to send.
constexpr rlim_t kMemoryPerByte = 8;

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
    if (!kAddressSanitizer)
        limit(RLIMIT_AS, kLeastMemory + size * kMemoryPerByte);
}

} // namespace jet::reader

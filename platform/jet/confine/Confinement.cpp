#include "Confinement.h"

#include "Sanitizer.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <seccomp.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace jet::confine {
namespace {

// System calls needed to read a file, convert its texts and write to a pipe, and those of the libraries below. All
// other calls are refused, including those of future kernels.
constexpr auto kAllowed = std::to_array<int>({
    SCMP_SYS(read),
    SCMP_SYS(readv),
    SCMP_SYS(pread64),
    SCMP_SYS(lseek),
    SCMP_SYS(_llseek),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(close),
    SCMP_SYS(stat),
    SCMP_SYS(stat64),
    SCMP_SYS(lstat),
    SCMP_SYS(lstat64),
    SCMP_SYS(fstat),
    SCMP_SYS(fstat64),
    SCMP_SYS(newfstatat),
    SCMP_SYS(fstatat64),
    SCMP_SYS(statx),
    SCMP_SYS(statfs),
    SCMP_SYS(fstatfs),
    SCMP_SYS(access),
    SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(getcwd),
    SCMP_SYS(getdents64),
    SCMP_SYS(fadvise64),
    SCMP_SYS(mmap),
    SCMP_SYS(mmap2),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(mprotect),
    SCMP_SYS(madvise),
    SCMP_SYS(brk),
    SCMP_SYS(futex),
    SCMP_SYS(getrandom),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(sched_yield),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_getres),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(time),
    SCMP_SYS(nanosleep),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(getpid),
    SCMP_SYS(gettid),
    SCMP_SYS(getuid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getegid),
    SCMP_SYS(uname),
    SCMP_SYS(sysinfo),
    SCMP_SYS(getrusage),
    SCMP_SYS(getrlimit),
    SCMP_SYS(ugetrlimit),
    SCMP_SYS(sched_getaffinity),
});

constexpr int kFileCommands[] = {F_GETFD, F_SETFD, F_GETFL, F_SETPIPE_SZ};
// O_TMPFILE needs a write access mode, which is refused by this mask.
constexpr scmp_datum_t kWritingFlags = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;

using Filter = std::unique_ptr<void, decltype(&seccomp_release)>;

bool allow(const Filter &filter, int call)
{
    return seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) == 0;
}

/// Allows the call if the masked bits of its argument have the given value.
bool allow(const Filter &filter, int call, unsigned argument, scmp_datum_t value, scmp_datum_t mask = ~scmp_datum_t(0))
{
    const scmp_arg_cmp compared{argument, SCMP_CMP_MASKED_EQ, mask, value};
    return seccomp_rule_add_array(filter.get(), SCMP_ACT_ALLOW, call, 1, &compared) == 0;
}

bool fillFilter(const Filter &filter)
{
    bool ok = true;
    for (const int call : kAllowed)
        ok = ok && allow(filter, call);
    for (const int command : kFileCommands) {
        for (const int call : {SCMP_SYS(fcntl), SCMP_SYS(fcntl64)})
            ok = ok && allow(filter, call, 1, scmp_datum_t(command));
    }
    ok = ok && allow(filter, SCMP_SYS(open), 1, O_RDONLY, kWritingFlags);
    ok = ok && allow(filter, SCMP_SYS(openat), 2, O_RDONLY, kWritingFlags);
    // Limits may be read but not set. The only process that may be signalled is this one (abort()).
    ok = ok && allow(filter, SCMP_SYS(prlimit64), 2, 0);
    return ok && allow(filter, SCMP_SYS(tgkill), 0, scmp_datum_t(getpid()));
}

} // namespace

const bool kCanConfine = !kAddressSanitizer;

bool confine()
{
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        return false;
    if (!kCanConfine)
        return true;
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)), seccomp_release);
    return filter && fillFilter(filter) && seccomp_load(filter.get()) == 0;
}

} // namespace jet::confine

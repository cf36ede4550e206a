#include "XlsxPacking.h"

#include <cerrno>
#include <csignal>
#include <QScopeGuard>
#include <QThread>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <tarnwick/base/Error.h>
#include <unistd.h>
#include <xlsxwriter.h>

namespace query {

namespace {

constexpr unsigned long kLookEvery = 5; // ms

/// Waits for the end of a child process. Returns false if it still runs.
bool hasEnded(pid_t child, int options, int &status)
{
    pid_t ended = 0;
    do {
        ended = ::waitpid(child, &status, options);
    } while (ended < 0 && errno == EINTR);
    return ended != 0;
}

} // namespace

int packBook(lxw_workbook *book, tarnwick::Progress *progress)
{
    const pid_t child = ::fork();
    if (child < 0)
        throw tarnwick::Error(QStringLiteral("The system cannot start another process to pack the spreadsheet."));
    if (child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::_exit(int(workbook_close(book)));
    }
    int status = 0;
    auto ending = qScopeGuard([&] {
        ::kill(child, SIGKILL);
        hasEnded(child, 0, status);
    });
    tarnwick::ProgressLoop loop(progress, 0, QStringLiteral("Packing"));
    while (!hasEnded(child, WNOHANG, status)) {
        QThread::msleep(kLookEvery);
        loop.tick(0);
    }
    ending.dismiss();
    return WIFEXITED(status) ? WEXITSTATUS(status) : int(LXW_ERROR_ZIP_CLOSE);
}

} // namespace query

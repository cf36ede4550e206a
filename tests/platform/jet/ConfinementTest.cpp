#include "TestFiles.h"

#include <jet/confine/Confinement.h>
#include <jet/confine/Limits.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <QCoreApplication>
#include <QProcess>
#include <support/Files.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace jet::test {
namespace {

constexpr int kDone = 100;
constexpr int kNotConfined = 101;

// Result of the call in a process that has confined itself: the error number, or success.
int outcome(const std::function<long()> &call)
{
    const pid_t child = fork();
    if (child == 0) {
        confine::setLimits(0);
        if (!confine::confine())
            _exit(kNotConfined);
        errno = 0;
        _exit(call() >= 0 ? kDone : errno);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(JetConfinementTest, AReaderReadsAndWritesToItsPipeAndDoesNothingElse)
{
    if (!confine::kCanConfine)
        GTEST_SKIP() << "the address sanitizer needs what is taken away here";
    QTemporaryDir folder;
    const QByteArray path = QFile::encodeName(writeFile(folder, "text"));
    const QByteArray other = path + ".new";
    const pid_t parent = getpid();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const rlimit most{RLIM_INFINITY, RLIM_INFINITY};

    struct Case
    {
        const char *what;
        std::function<long()> call;
    };
    const Case refused[] = {
        {"make a file", [&] { return open(other, O_WRONLY | O_CREAT, 0600); }},
        {"change a file", [&] { return open(path, O_RDWR); }},
        {"empty a file", [&] { return open(path, O_RDONLY | O_TRUNC); }},
        {"remove a file", [&] { return unlink(path); }},
        {"rename a file", [&] { return rename(path, other); }},
        {"change rights", [&] { return chmod(path, 0777); }},
        {"make a folder", [&] { return mkdir(other, 0700); }},
        {"connect to a network", [] { return socket(AF_INET, SOCK_STREAM, 0); }},
        {"connect to a program", [] { return socket(AF_UNIX, SOCK_STREAM, 0); }},
        {"start a process", [] { return fork(); }},
        {"run a program", [] { return execl("/bin/true", "true", nullptr); }},
        {"end another process", [&] { return kill(parent, 0); }},
        {"read another process", [&] { return ptrace(PTRACE_ATTACH, parent, nullptr, nullptr); }},
        {"be another user", [] { return setuid(12345); }},
        {"lift a limit", [&] { return setrlimit(RLIMIT_AS, &most); }},
        {"be told of changes of a file", [&] { return fcntl(ends[0], F_SETOWN, parent); }},
    };
    for (const Case &one : refused)
        EXPECT_EQ(outcome(one.call), EPERM) << one.what;
    const Case allowed[] = {
        {"read a file",
         [&] {
             char byte = 0;
             return read(open(path, O_RDONLY | O_CLOEXEC), &byte, 1) == 1 ? 0 : -1;
         }},
        {"write to a pipe", [&] { return write(ends[1], "x", 1); }},
        {"end itself", [] { return raise(0); }},
    };
    for (const Case &one : allowed)
        EXPECT_EQ(outcome(one.call), kDone) << one.what;
    // A file that was open before is not written to either: the limit on its size ends the process.
    const int before = open(path, O_WRONLY);
    EXPECT_EQ(outcome([&] { return write(before, "x", 1); }), -SIGXFSZ);
    close(before);
    EXPECT_TRUE(QFile::exists(QString::fromUtf8(path)));
    EXPECT_FALSE(QFile::exists(QString::fromUtf8(other)));
}

// The real program, held up where it opens its file, which is a pipe that nobody writes to.
TEST(JetConfinementTest, TheReadingProgramConfinesItselfBeforeItOpensTheFile)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(u"fifo.mdb"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(path), 0600), 0);
    QProcess reader;
    reader.start(QCoreApplication::applicationDirPath() + u"/arvo-jet-reader"_s, {path});
    ASSERT_TRUE(reader.waitForStarted());
    const auto textOf = [&](const QString &name) {
        return QString::fromUtf8(support::readFile(u"/proc/%1/%2"_s.arg(reader.processId()).arg(name))).simplified();
    };
    const QString last = confine::kCanConfine ? u"Seccomp: 2"_s : u"NoNewPrivs: 1"_s;
    QString status;
    for (int tries = 0; tries < 500 && !status.contains(last); ++tries) {
        usleep(20'000);
        status = textOf(u"status"_s);
    }
    EXPECT_TRUE(status.contains(u"NoNewPrivs: 1"_s)) << qPrintable(status);
    EXPECT_TRUE(status.contains(last)) << qPrintable(status);
    const QString limits = textOf(u"limits"_s);
    EXPECT_TRUE(limits.contains(u"Max file size 0 0"_s)) << qPrintable(limits);
    if (confine::kCanConfine) {
        EXPECT_TRUE(limits.contains(u"Max processes 0 0"_s)) << qPrintable(limits);
    }
    reader.kill();
    reader.waitForFinished();
}

} // namespace
} // namespace jet::test

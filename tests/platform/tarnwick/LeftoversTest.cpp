#include <support/TemporaryFolder.h>
#include <tarnwick/Leftovers.h>
#include <tarnwick/ProcessLock.h>
#include <tarnwick/TemporaryName.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

TEST(LeftoversTest, OfAKilledProgramGoAndThoseOfTheLivingStay)
{
    const support::TemporaryFolder folder;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", folder.path().toLocal8Bit());
    QDir(folder.path()).mkpath(u"history/palomine"_s);
    const auto work = [&] {
        QTemporaryDir copies(tarnwick::workFolderPattern());
        folder.write(QDir(folder.path()).relativeFilePath(copies.filePath(u"copy.mdb"_s)), "large");
        const QString half = tarnwick::temporaryNameFor(folder.path(u"history/palomine/project.hst"_s));
        folder.write(QDir(folder.path()).relativeFilePath(half), "half");
        copies.setAutoRemove(false);
    };
    work();
    const pid_t child = fork();
    if (child == 0) {
        work();
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    const QString users = u"arvo-work-2019-backup1"_s;
    folder.write(users + u"/notes.txt"_s, "mine");
    folder.write(u"arvo-work-999999999-abcdef"_s, "a file");
    ASSERT_EQ(folder.names().size(), 5);
    ASSERT_EQ(folder.names(u"history/palomine"_s).size(), 2);

    tarnwick::removeWorkFolders();
    tarnwick::removeLeftoversBelow(folder.path());
    qputenv("TMPDIR", before);
    EXPECT_EQ(folder.names().size(), 4) << folder.names().join(u' ').toStdString();
    EXPECT_TRUE(folder.has(users + u"/notes.txt"_s));
    EXPECT_EQ(folder.names(u"history/palomine"_s).size(), 1);
}

TEST(ProcessLockTest, IsHeldByOneProcessAndGoesWithIt)
{
    const support::TemporaryFolder folder;
    const QString path = folder.path(u"a.lock"_s);
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        const auto lock = tarnwick::ProcessLock::tryTake(path);
        char done = lock ? 'y' : 'n';
        EXPECT_EQ(write(ready[1], &done, 1), 1);
        for (;;)
            pause();
    }
    char done = 'n';
    ASSERT_EQ(read(ready[0], &done, 1), 1);
    EXPECT_EQ(done, 'y');
    EXPECT_EQ(tarnwick::ProcessLock::tryTake(path), nullptr);
    kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    {
        const auto lock = tarnwick::ProcessLock::tryTake(path);
        EXPECT_NE(lock, nullptr);
        EXPECT_TRUE(QFile::exists(path));
    }
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_THROW(tarnwick::ProcessLock::tryTake(folder.path(u"not/there.lock"_s)), tarnwick::FileError);
}

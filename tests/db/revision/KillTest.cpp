#include "RevisionFixture.h"

#include <csignal>
#include <QDir>
#include <QFile>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Says yes to everything, and kills its process when it has been called that often.
class Killer : public tarnwick::UserPrompts, public tarnwick::Progress
{
public:
    explicit Killer(int calls)
        : m_calls(calls)
    {
    }
    void showError(int, int, const QString &) override { count(); }
    void showInformation(const QString &) override { count(); }
    void showStatus(const QString &) override { count(); }
    tarnwick::Answer ask(tarnwick::Buttons, const QString &, int) override
    {
        count();
        return tarnwick::Answer::Yes;
    }
    void report(qint64, qint64, const QString &) override { count(); }
    bool cancelled() override { return false; }

private:
    void count()
    {
        if (m_calls-- == 0)
            ::kill(::getpid(), SIGKILL);
    }
    int m_calls;
};

} // namespace

/// A program that is killed while it converts leaves the old file or the new one, whole.
class KillTest : public RevisionTest
{
protected:
    /// True when the child was killed, false when it came to its end.
    bool connectAndDie(int calls)
    {
        const pid_t child = startChild(calls);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFSIGNALED(status);
    }

    /// isOld: whether the file, which has other bytes than before, holds what it held; checks that it is whole.
    using IsOld = bool (KillTest::*)();
    void killAtEveryCall(const QByteArray &before, int leastKills, IsOld isOld = &KillTest::isOldShape)
    {
        int kills = 0;
        bool sawOld = false;
        for (;; ++kills) {
            SCOPED_TRACE(kills);
            putBack(before);
            if (!connectAndDie(kills))
                break;
            sawOld = checkWhatIsLeft(before, isOld) || sawOld;
        }
        EXPECT_TRUE(sawOld);
        EXPECT_GE(kills, leastKills);
    }

private:
    void putBack(const QByteArray &before)
    {
        for (const QString &name : folder.names(u"arvo"_s))
            QFile::remove(folder.path(u"arvo/"_s + name));
        folder.write(u"arvo/project.mdb"_s, before);
    }
    pid_t startChild(int calls)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            Killer killer(calls);
            db::DatabaseSession doomed(killer);
            db::connectDatabase(doomed, path, {&project, nullptr, &killer});
            doomed.close();
            ::_exit(0);
        }
        return child;
    }
    /// True when it is the old file.
    bool checkWhatIsLeft(const QByteArray &before, IsOld contentIsOld)
    {
        const bool isOld = bytes() == before || openAndAsk(contentIsOld);
        if (!isOld && contentIsOld == &KillTest::isOldShape) {
            EXPECT_EQ(folder.read(u"arvo/project._db"_s), before);
        }
        EXPECT_TRUE(connect({Answer::Yes})) << "what is there can be connected";
        EXPECT_EQ(errors(), QStringList());
        session.close();
        return isOld;
    }
    bool openAndAsk(IsOld isOld)
    {
        session.open(path);
        const bool old = (this->*isOld)();
        session.close();
        return old;
    }

public:
    bool isOldShape()
    {
        int newTables = 0;
        newTables += database().table(u"plans").field(u"name") != nullptr;
        newTables += database().table(u"plan_entry").field(u"name") != nullptr;
        newTables += database().table(u"report").field(u"plan") != nullptr;
        newTables += database().hasTable(u"leg_alias");
        EXPECT_TRUE(newTables == 0 || newTables == 4);
        return newTables == 0;
    }
    bool isNotImported()
    {
        if (!database().hasTable(u"report"))
            return true;
        EXPECT_EQ(number(u"SELECT COUNT(*) FROM report"_s), 250);
        EXPECT_EQ(number(u"SELECT COUNT(*) FROM tube_sets"_s), 2);
        return false;
    }
};

TEST_F(KillTest, OwnFormat)
{
    make(old::Everything);
    killAtEveryCall(bytes(), 10);
}

TEST_F(KillTest, JetFile)
{
    const QString samples = qEnvironmentVariable("ARVO_TESTDATA");
    if (samples.isEmpty())
        GTEST_SKIP() << "ARVO_TESTDATA is not set: the sample files are not here";
    killAtEveryCall(support::readFile(QDir(samples).filePath(u"suite-old-1.mdb"_s)), 12);
}

TEST_F(KillTest, ForeignImport)
{
    old::makeForeignDatabase(path);
    QStringList rows;
    for (int i = 1; i <= 250; ++i)
        rows.append(u"INSERT INTO EXAMDATA (PRIMEKEY, TUBEQUAD, TUBEROW, TUBECOL) VALUES (%1, 0, 1, 2)"_s.arg(i));
    old::executeAll(path, rows);
    killAtEveryCall(bytes(), 4, &KillTest::isNotImported);
}

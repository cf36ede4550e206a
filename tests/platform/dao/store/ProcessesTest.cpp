#include "Fixture.h"

#include <dao/values/Errors.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace dao;

// Several processes use one file.

namespace {

/// Another process that uses the file. The processes exchange single characters.
class OtherProcess
{
public:
    class Line
    {
    public:
        Line(int in, int out)
            : m_in(in)
            , m_out(out)
        {
        }
        void say(char word) const { [[maybe_unused]] const auto written = ::write(m_out, &word, 1); }
        char hear() const
        {
            char word = 0;
            return ::read(m_in, &word, 1) == 1 ? word : char(0);
        }

    private:
        int m_in;
        int m_out;
    };

    /// No database may be open in this process yet: SQLite's locks do not survive a fork.
    template <typename Body>
    explicit OtherProcess(Body &&body)
    {
        if (::pipe(m_toChild) != 0 || ::pipe(m_toParent) != 0)
            ADD_FAILURE() << "no pipes";
        m_child = ::fork();
        if (m_child != 0)
            return;
        int status = 0;
        try {
            body(Line(m_toChild[0], m_toParent[1]));
        } catch (const std::exception &) {
            status = 1;
        }
        ::_exit(status);
    }
    ~OtherProcess()
    {
        if (m_child > 0)
            kill();
        for (const int end : {m_toChild[0], m_toChild[1], m_toParent[0], m_toParent[1]})
            ::close(end);
    }
    OtherProcess(const OtherProcess &) = delete;
    OtherProcess &operator=(const OtherProcess &) = delete;

    Line line() const { return Line(m_toParent[0], m_toChild[1]); }
    int finish()
    {
        int status = 0;
        ::waitpid(std::exchange(m_child, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void kill()
    {
        ::kill(m_child, SIGKILL);
        finish();
    }

private:
    pid_t m_child = 0;
    int m_toChild[2]{};
    int m_toParent[2]{};
};

void addRows(Database &database, int count, int value)
{
    Recordset rows(database);
    rows.open(Recordset::Type::TableAppend, u"t"_s);
    for (int i = 0; i < count; ++i) {
        rows.addNew();
        rows.setValue(u"x"_s, number(value));
        rows.update();
    }
}

/// Adds rows and yields to the other process; after a timeout it tries again.
void addRowsInTurn(Database &database, int count, int value)
{
    for (int i = 0; i < count; ++i) {
        int failure = -1;
        while (failure != 0) {
            failure = numberOf([&] { addRows(database, 1, value); });
            ASSERT_TRUE(failure == 0 || failure == error::FileLocked || failure == error::FileInUse) << failure;
        }
        ::usleep(15'000);
    }
}

} // namespace

class ProcessesTest : public StoreTest
{
protected:
    ProcessesTest()
    {
        database.execute(u"CREATE TABLE t (id COUNTER CONSTRAINT pk PRIMARY KEY, x LONG, m MEMO)"_s);
        addRows(database, 3, 0);
        database.close();
    }
    const QString inUse = u"Could not use '%1'; file already in use."_s.arg(path());
    const QString locked = u"Couldn't update; the file '%1' is currently locked by another user."_s.arg(path());
};

TEST_F(ProcessesTest, TwoWritersWaitForEachOther)
{
    constexpr int each = 30;
    OtherProcess other([&](const OtherProcess::Line &line) {
        Workspace own;
        Database same(own);
        same.open(path());
        line.say('r');
        addRowsInTurn(same, each, 1);
    });
    other.line().hear();
    while (numberOf([&] { database.open(path()); }) == error::FileInUse) {
    }
    addRowsInTurn(database, each, 2);
    EXPECT_EQ(other.finish(), 0);
    EXPECT_EQ(rows(u"SELECT x, Count(*) AS n FROM t GROUP BY x ORDER BY x"_s), u"0|3 1|30 2|30"_s);
    EXPECT_EQ(rows(u"SELECT Count(*) AS n FROM (SELECT DISTINCT id FROM t) AS d"_s), u"63"_s);
}

TEST_F(ProcessesTest, AReaderSeesWhatIsCommittedAndAWriterIsToldWhoIsInTheWay)
{
    OtherProcess other([&](const OtherProcess::Line &line) {
        Workspace own;
        Database same(own);
        same.open(path());
        own.beginTrans();
        addRows(same, 1, 1);
        same.execute(u"CREATE TABLE fresh (y LONG)"_s);
        line.say('w');
        line.hear();
        own.commitTrans();
        line.say('c');
        line.hear();
    });
    other.line().hear();
    database.open(path());
    EXPECT_EQ(rows(u"SELECT Count(*) AS n FROM t"_s), u"3"_s);
    EXPECT_EQ(errorOf([&] { addRows(database, 1, 2); }), u"3260 DAO.Recordset: "_s + locked);
    EXPECT_EQ(errorOf([&] { database.execute(u"DELETE FROM t"_s); }), u"3260 DAO.QueryDef: "_s + locked);
    EXPECT_EQ(errorOf([&] { database.execute(u"CREATE INDEX i ON t (x)"_s); }), u"3260 DAO.QueryDef: "_s + locked);
    EXPECT_EQ(database.table(u"t").indexes.size(), 1);
    other.line().say('g');
    other.line().hear();
    EXPECT_EQ(rows(u"SELECT Count(*) AS n FROM t"_s), u"4"_s);
    EXPECT_TRUE(database.hasTable(u"fresh")) << "definitions of others are seen at the next statement";
    addRows(database, 1, 2);
    other.line().say('g');
    EXPECT_EQ(other.finish(), 0);
}

TEST_F(ProcessesTest, AWriterThatIsKilledLeavesTheDataAsItWas)
{
    database.open(path());
    raw(u"INSERT INTO t (x, m) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 6000) "
        "SELECT i, hex(randomblob(8000)) FROM n"_s);
    const QString summary = u"SELECT Count(*) AS n, Sum(x) AS s, Sum(Len(m)) AS l FROM t"_s;
    const QString before = rows(summary);
    database.close();
    OtherProcess other([&](const OtherProcess::Line &line) {
        Workspace own;
        Database same(own);
        same.open(path());
        own.beginTrans();
        // More changes than the page cache holds: some are in the file when the process is killed.
        same.execute(u"UPDATE t SET m = m & 'more', x = x + 1"_s);
        same.execute(u"CREATE TABLE half (y LONG)"_s);
        line.say('w');
        line.hear();
    });
    other.line().hear();
    EXPECT_EQ(errorOf([&] { database.open(path()); }), u"3045 DAO.Workspace: "_s + inUse);
    other.kill();
    database.open(path());
    EXPECT_EQ(rows(summary), before);
    EXPECT_FALSE(database.hasTable(u"half"));
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
    addRows(database, 1, 7);
}

#include "Fixture.h"

#include <algorithm>
#include <QElapsedTimer>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::relation;
using build::table;

// A user cancels statements of every kind over many rows: they must end soon and undo all of their changes, but no
// earlier change of the program's transaction.

namespace {

const int rowCount = qMax(300'000, qEnvironmentVariableIntValue("ARVO_TEST_ROWS"));

/// Cancels after a while and measures how long the statement takes to stop.
class StopSoon : public tarnwick::Progress
{
public:
    StopSoon() { m_sinceStart.start(); }
    bool cancelled() override
    {
        m_asked = m_asked || m_sinceStart.hasExpired(patience);
        return m_asked;
    }
    bool wasAsked() const { return m_asked; }
    qint64 waited() const { return m_sinceStart.elapsed() - patience; }

private:
    static constexpr int patience = 20; // milliseconds
    QElapsedTimer m_sinceStart;
    bool m_asked = false;
};

struct Work
{
    const char *name;
    std::function<void(Database &)> run;
};

Work statement(const char *name, const QString &sql)
{
    return {name, [sql](Database &database) { database.execute(sql); }};
}

Work query(const char *name, const QString &sql, Recordset::Type type = Recordset::Type::Dynaset)
{
    return {name, [sql, type](Database &database) {
                Recordset set(database);
                for (set.open(type, sql); type == Recordset::Type::Snapshot && !set.isEof(); set.moveNext()) {
                }
            }};
}

FieldInfo another()
{
    return field(u"another"_s, DataType::Long, 0, "R", {}, u"=Now()*0"_s);
}

QList<Work> works()
{
    return {
        query("select", u"SELECT a.x FROM big AS a, big AS b WHERE a.x + b.x = -1"_s),
        query("snapshot", u"SELECT a.x FROM big AS a, big AS b WHERE a.x + b.x = -1"_s, Recordset::Type::Snapshot),
        query("dynaset keys", u"SELECT a.x FROM big AS a INNER JOIN big AS b ON a.name < b.name"_s),
        query("sorted", u"SELECT id FROM big ORDER BY name & 'x', x DESC"_s),
        query("distinct", u"SELECT DISTINCT name, x FROM big"_s),
        query("grouped", u"SELECT a.name, Count(*) FROM big AS a, big AS b GROUP BY a.name"_s),
        query("cross table", u"TRANSFORM Count(*) SELECT a.name FROM big AS a, big AS b WHERE a.x * b.x = -1 "
                             "GROUP BY a.name PIVOT a.x Mod 10"_s),
        query("cross table as a source", u"SELECT * FROM crossed"_s),
        query("domain function", u"SELECT DCount('*', 'big', 'x * x = ' & x) FROM big"_s, Recordset::Type::Snapshot),
        statement("update", u"UPDATE big SET x = x + 1, name = name & 'x' WHERE x * x >= 0"_s),
        statement("update that finds nothing", u"UPDATE big SET x = 0 WHERE Left(name & name & name, 3) = 'zzz' Or "
                                               "Len(Replace(name & name, 'a', 'b')) = 1"_s),
        statement("update with a subquery",
                  u"UPDATE big SET x = 0 WHERE (SELECT Count(*) FROM big AS m WHERE m.x * big.x = -1) > 0"_s),
        statement("update by a domain function", u"UPDATE big SET x = DCount('*', 'big', 'x * x = ' & x)"_s),
        statement("joined update", u"UPDATE big INNER JOIN small ON big.x Mod 7 < small.y SET big.x = small.y"_s),
        statement("joined update of two",
                  u"UPDATE big INNER JOIN small ON big.x Mod 7 < small.y SET big.x = small.y, small.z = big.x"_s),
        statement("delete", u"DELETE FROM big WHERE Len(Replace(name & x, 'a', 'bb')) > 1 And Left(name, 1) = 'n'"_s),
        statement("delete with a subquery",
                  u"DELETE FROM big WHERE x IN (SELECT a.x FROM big AS a, small AS b WHERE a.x * b.y = -1)"_s),
        statement("joined delete", u"DELETE big.* FROM big INNER JOIN small ON big.x Mod 7 < small.y"_s),
        statement("delete with a cascade", u"DELETE FROM parents"_s),
        statement("insert of a select", u"INSERT INTO big (x, name) SELECT x, name FROM big"_s),
        statement("insert of a sorted select",
                  u"INSERT INTO big (x, name) SELECT x, name FROM big ORDER BY name & 'x', x DESC"_s),
        statement("insert that finds nothing",
                  u"INSERT INTO big (x, name) SELECT a.x, a.name FROM big AS a, big AS b WHERE a.x + b.x = -1"_s),
        statement("make table", u"SELECT x, name & 'y' AS n INTO fresh FROM big"_s),
        statement("create index", u"CREATE INDEX i ON big (name, x)"_s),
        statement("create unique index", u"CREATE UNIQUE INDEX i ON big (name, id)"_s),
        statement("add a checked constraint", u"ALTER TABLE big ADD CONSTRAINT c CHECK (x >= 0)"_s),
        statement("alter a field", u"ALTER TABLE big ALTER COLUMN x TEXT(20)"_s),
        statement("drop a field", u"ALTER TABLE big DROP COLUMN y"_s),
        {"add a computed field", [](Database &database) { database.addField(u"big", another()); }},
        {"alter with fills",
         [](Database &database) {
             TableInfo shape = database.table(u"big");
             shape.fields.append(field(u"more"_s, DataType::Text, 50));
             database.alterTable(u"big", shape, {{u"more"_s, u"name & '-' & x"_s}});
         }},
        {"relation",
         [](Database &database) { database.createRelation(relation(u"r"_s, u"keys"_s, u"big"_s, 0, u"x"_s, u"x"_s)); }},
    };
}

} // namespace

class StopTest : public StoreTest, public ::testing::WithParamInterface<bool>
{
protected:
    StopTest()
    {
        database.execute(u"CREATE TABLE big (id COUNTER CONSTRAINT pk PRIMARY KEY, x LONG, name TEXT(50), y LONG)"_s);
        database.execute(u"CREATE TABLE small (y COUNTER CONSTRAINT pk PRIMARY KEY, z LONG)"_s);
        database.execute(u"CREATE TABLE keys (x LONG CONSTRAINT pk PRIMARY KEY)"_s);
        database.execute(u"CREATE TABLE parents (p LONG CONSTRAINT pk PRIMARY KEY)"_s);
        database.execute(u"CREATE TABLE children (p LONG, n LONG)"_s);
        database.execute(u"CREATE INDEX p ON children (p)"_s);
        database.createRelation(relation(u"c"_s, u"parents"_s, u"children"_s, DeleteCascade, u"p"_s, u"p"_s));
        database.createQuery({u"crossed"_s, u"TRANSFORM Count(*) SELECT a.name FROM big AS a, big AS b "
                                            "WHERE a.x * b.x = -1 GROUP BY a.name PIVOT a.x Mod 10"_s});
        const QString count = u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "_s;
        const auto fill = [&](const QString &insert, int rows) {
            EXPECT_EQ(raw(count.arg(rows - 1) + insert), QString()) << insert.toStdString();
        };
        fill(u"INSERT INTO big (x, name) SELECT i, 'name of ' || (i * 7919 % 1000003) FROM n"_s, rowCount);
        fill(u"INSERT INTO small (y) SELECT i FROM n"_s, 300);
        fill(u"INSERT INTO keys (x) SELECT i FROM n"_s, rowCount);
        fill(u"INSERT INTO parents (p) SELECT i FROM n"_s, 1);
        // Deleting is fast and must last until the first call of the progress object.
        fill(u"INSERT INTO children (p, n) SELECT 0, i FROM n"_s, 3 * rowCount);
    }
    ~StopTest() override { database.setProgress(nullptr); }

    QString content()
    {
        return rows(u"SELECT Count(*), Sum(x), Sum(Len(name)), Sum(id) FROM big"_s) + u' ' +
               rows(u"SELECT Count(*), Sum(n) FROM children"_s) + u' ' + rows(u"SELECT Sum(y), Count(z) FROM small"_s) +
               u' ' + database.tableNames().join(u',') + QString::number(database.table(u"big").fields.size()) +
               QString::number(database.table(u"big").indexes.size()) + database.table(u"big").validationRule +
               QString::number(database.relations().size());
    }
};

TEST_P(StopTest, EveryKindOfStatementStopsSoonAndLeavesAllAsItWas)
{
    constexpr int mostMilliseconds = 10000;
    const bool inTransaction = GetParam();
    if (inTransaction) {
        workspace.beginTrans();
        database.execute(u"INSERT INTO small (y) VALUES (1000)"_s);
    }
    const QString before = content();
    qint64 longest = 0;
    QList<Work> all = works();
    // Outside of a transaction this statement takes no time.
    if (inTransaction) {
        all.append(statement("delete of all", u"DELETE FROM children"_s));
    }
    for (const Work &work : all) {
        StopSoon stop;
        database.setProgress(&stop);
        EXPECT_EQ(errorOf([&] { work.run(database); }), u"cancelled"_s) << work.name;
        database.setProgress(nullptr);
        ASSERT_TRUE(stop.wasAsked()) << work.name;
        const qint64 waited = stop.waited();
        longest = std::max(longest, waited);
        std::cout << "  " << work.name << ": " << waited << " ms\n";
        EXPECT_LT(waited, mostMilliseconds) << work.name;
        ASSERT_EQ(content(), before) << work.name;
    }
    RecordProperty("longest_milliseconds", int(longest));
    if (inTransaction) {
        EXPECT_EQ(workspace.transactionDepth(), 1);
        workspace.commitTrans();
    }
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM small WHERE y = 1000"_s), inTransaction ? u"1"_s : u"0"_s);
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
    // A cancelled statement can be run again.
    database.execute(u"CREATE INDEX i ON big (name, x)"_s);
    EXPECT_EQ(database.execute(u"UPDATE big SET y = 1 WHERE x < 10"_s), 10);
}

INSTANTIATE_TEST_SUITE_P(Store, StopTest, testing::Bool(),
                         [](const auto &mode) { return std::string(mode.param ? "InATransaction" : "Alone"); });

/// Never cancels.
class GoOn : public tarnwick::Progress
{
public:
    bool cancelled() override { return false; }
};

TEST_F(StoreTest, WhatCouldHaveBeenStoppedDoesTheSame)
{
    GoOn progress;
    const auto prepare = [&] {
        database.execute(u"CREATE TABLE t (id COUNTER PRIMARY KEY, x LONG, name TEXT(20))"_s);
        database.execute(u"CREATE TABLE u (k LONG PRIMARY KEY, v TEXT(20))"_s);
        for (int i = 1; i <= 6; ++i) {
            database.execute(u"INSERT INTO t (x, name) VALUES (%1, 'n%2')"_s.arg(i % 3).arg(i));
            database.execute(u"INSERT INTO u (k, v) VALUES (%1, 'v%1')"_s.arg(i));
        }
    };
    const QStringList statements{
        u"UPDATE t SET x = x + 1 WHERE x > 0"_s,
        u"UPDATE t SET name = 'all'"_s,
        u"UPDATE t SET x = 10 WHERE id IN (SELECT k FROM u WHERE k > 4)"_s,
        u"UPDATE t SET x = (SELECT Max(k) FROM u WHERE k < t.id)"_s,
        u"UPDATE t INNER JOIN u ON t.id >= u.k SET t.name = u.v"_s,
        u"UPDATE t LEFT JOIN u ON t.id = u.k + 4 SET t.x = u.k, u.v = t.name WHERE u.k Is Not Null"_s,
        u"INSERT INTO t (x, name) SELECT x, name FROM t WHERE id < 4 ORDER BY id DESC"_s,
        u"UPDATE u RIGHT JOIN t ON u.k = t.id SET u.k = t.id, u.v = t.name"_s,
        u"INSERT INTO u SELECT id + 100 AS k, name AS v FROM t"_s,
        u"INSERT INTO u (k, v) SELECT DISTINCT id + 200, 'd' FROM t"_s,
        u"INSERT INTO u (k, v) SELECT 300, 'one' UNION SELECT 301, 'two'"_s,
        u"DELETE t.* FROM t INNER JOIN u ON t.id = u.k WHERE u.k < 3"_s,
        u"DELETE FROM u WHERE k IN (SELECT id FROM t)"_s,
        u"DELETE FROM t WHERE x > 1"_s,
        u"CREATE UNIQUE INDEX both ON t (x, id)"_s,
        u"ALTER TABLE t ALTER COLUMN x TEXT(9)"_s,
        u"ALTER TABLE t DROP COLUMN name"_s,
        u"DELETE FROM t"_s,
    };
    const auto play = [&] {
        QStringList log;
        for (const QString &sql : statements)
            log.append(QString::number(database.execute(sql)) + u": "_s + rows(u"SELECT * FROM t ORDER BY id"_s) +
                       u" / "_s + rows(u"SELECT * FROM u ORDER BY k"_s));
        return log;
    };
    workspace.beginTrans();
    prepare();
    const QStringList plain = play();
    workspace.rollback();
    workspace.beginTrans();
    database.setProgress(&progress);
    prepare();
    const QStringList asking = play();
    workspace.commitTrans();
    database.setProgress(nullptr);
    for (qsizetype i = 0; i < plain.size(); ++i)
        EXPECT_EQ(asking[i], plain[i]) << statements[i].toStdString();
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
    EXPECT_EQ(rawRows(u"SELECT sql FROM sqlite_schema WHERE name = 't.both'"_s),
              u"CREATE UNIQUE INDEX \"t.both\" ON \"t\" (\"x\", \"id\")"_s);
}

TEST_F(StoreTest, AStatementThatFailsOrStopsDoesNotEndTheReadingOfOthers)
{
    database.createTable(table(u"t"_s, {field(u"x"_s, DataType::Long, 0, "", u"< 100"_s)}));
    for (int i = 0; i < 5; ++i)
        append(u"t"_s, {{u"x"_s, number(i)}});
    const QStringList failing{u"UPDATE t SET x = x + 97"_s,
                              u"UPDATE t AS a INNER JOIN t AS b ON a.x = b.x SET a.x = b.x + 97"_s,
                              u"UPDATE t SET x = 1 / (x - 3)"_s};
    for (const bool inTransaction : {false, true}) {
        for (const QString &sql : failing) {
            if (inTransaction) {
                workspace.beginTrans();
            }
            Recordset set(database);
            set.open(Recordset::Type::Snapshot, u"SELECT x FROM t"_s);
            set.moveNext();
            EXPECT_NE(numberOf([&] { database.execute(sql); }), 0);
            QString seen;
            for (; !set.isEof(); set.moveNext())
                seen += textOf(set.value(0));
            EXPECT_EQ(seen, u"1234"_s) << sql.toStdString();
            if (inTransaction) {
                workspace.commitTrans();
            }
        }
    }
    EXPECT_EQ(rawRows(u"SELECT x FROM t"_s), u"0 1 2 3 4"_s);
}

TEST_F(StoreTest, ReadingAFileCanBeStopped)
{
    class Stop : public tarnwick::Progress
    {
    public:
        bool cancelled() override { return true; }
    } stop;
    database.execute(u"CREATE TABLE t (m MEMO)"_s);
    raw(u"INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 8) "
        "SELECT hex(randomblob(300000)) FROM n"_s);
    database.setProgress(&stop);
    EXPECT_EQ(errorOf([&] { database.readFile([](QByteArrayView) { QThread::msleep(150); }); }), u"cancelled"_s);
    database.setProgress(nullptr);
}

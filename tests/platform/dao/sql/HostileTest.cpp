#include "TestDatabase.h"

#include <ctime>
#include <dao/values/Errors.h>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Malicious texts: each statement must end soon, with an error number or a result.

namespace {

class HostileTest : public testing::Test
{
protected:
    HostileTest() { m_database.run(u"CREATE TABLE t (id COUNTER PRIMARY KEY, a SHORT, b TEXT(20))"_s); }

    int errorOf(const QString &sql)
    {
        // Measures CPU time, because other load must not affect the test. A hanging statement exceeds the limit by far.
        const std::clock_t start = std::clock();
        int number = 0;
        try {
            m_database.run(sql);
        } catch (const dao::DaoException &exception) {
            number = exception.number();
            EXPECT_LE(exception.where().start + exception.where().length, sql.size());
            EXPECT_LT(exception.description().size(), 4000);
        }
        EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 60) << sql.first(100).toStdString();
        return number;
    }

    TestDatabase m_database;
};

/// Nests a text depth times.
QString nested(const QString &before, const QString &kernel, const QString &behind, int depth)
{
    return before.repeated(depth) + kernel + behind.repeated(depth);
}

} // namespace

TEST_F(HostileTest, NestingOfEveryKindIsTooComplexAndNothingWorse)
{
    struct Case
    {
        QString before;
        QString kernel;
        QString behind;
    };
    const QString chain = u" + 1"_s.repeated(400);
    const Case cases[] = {
        {u"CREATE VIEW v AS "_s, u"SELECT 1"_s, {}},
        {u"SELECT * FROM ("_s, u"SELECT 1"_s, u") AS q"_s},
        {u"SELECT ("_s, u"SELECT 1"_s, u")"_s},
        {u"SELECT * FROM t WHERE a IN ("_s, u"SELECT 1"_s, u")"_s},
        {u"SELECT * FROM t WHERE EXISTS ("_s, u"SELECT 1"_s, u")"_s},
        {u"SELECT 1 UNION ("_s, u"SELECT 1"_s, u")"_s},
        {u"SELECT IIf("_s, u"True"_s, u", 1, 2)"_s},
        {u"SELECT a & ("_s, u"b"_s, u") FROM t"_s},
        {u"SELECT a BETWEEN ("_s, u"1"_s, u") AND 2 FROM t"_s},
    };
    for (const Case &test : cases) {
        const int error = errorOf(nested(test.before, test.kernel, test.behind, 10000));
        EXPECT_TRUE(error == 3360 || error == 3075) << test.before.toStdString() << error;
    }
    for (const QString &before : {u"("_s, u"Abs("_s, u"Not "_s, u"- "_s})
        EXPECT_EQ(errorOf(u"SELECT "_s + nested(before, u"1"_s, before.endsWith(u'(') ? u")"_s : QString(), 10000)),
                  3360);
    EXPECT_EQ(errorOf(u"SELECT 1"_s + u" + 1"_s.repeated(10000)), 3360);
    // Within the limits of this engine, but not of the inner one.
    EXPECT_EQ(errorOf(u"SELECT "_s + nested(u"Abs("_s, u"1"_s, u") + 1 - (2 * (1 + Abs(1)))"_s, 45)), 3360);
    // Deep trees of long chains that each start with the next one.
    EXPECT_EQ(errorOf(u"SELECT "_s + nested(u"(SELECT "_s, u"1"_s, chain + u')', 40)), 3360);
    EXPECT_EQ(errorOf(u"SELECT * FROM "_s + nested(u"("_s, u"t"_s, u" INNER JOIN t ON 1=1"_s.repeated(90) + u')', 100)),
              3360);
    EXPECT_EQ(errorOf(u"SELECT * FROM "_s +
                      nested(u"(SELECT * FROM "_s, u"t"_s, u" INNER JOIN t ON 1=1"_s.repeated(90) + u')', 45)),
              3360);
}

TEST_F(HostileTest, StoredQueriesWithinEachOtherAddUp)
{
    const QString chain = u" + 1"_s.repeated(200);
    m_database.addQuery(u"q0"_s, u"SELECT a FROM t"_s);
    m_database.addQuery(u"s0"_s, u"SELECT a FROM t"_s);
    m_database.addQuery(u"w0"_s, u"SELECT *, * FROM t"_s);
    for (int i = 1; i < 39; ++i) {
        const QString inner = QString::number(i - 1);
        m_database.addQuery(u"q%1"_s.arg(i), u"SELECT (SELECT Max(a) FROM q%1)%2 AS a FROM t"_s.arg(inner, chain));
        m_database.addQuery(u"s%1"_s.arg(i), u"SELECT a FROM (SELECT a FROM s%1) AS x WHERE a > 0"_s.arg(inner));
        m_database.addQuery(u"w%1"_s.arg(i), u"SELECT *, * FROM w%1"_s.arg(inner));
    }
    EXPECT_EQ(errorOf(u"SELECT * FROM q38"_s), 3360);
    EXPECT_EQ(errorOf(u"SELECT * FROM s38"_s), 0);
    EXPECT_EQ(errorOf(u"SELECT * FROM w38"_s), 3360) << "columns double with each";
}

TEST_F(HostileTest, FortyStoredQueriesStandWithinEachOther)
{
    const QString kinds[] = {
        u"SELECT TOP 50 a, b FROM %1 ORDER BY a"_s,
        u"SELECT TOP 50 PERCENT a, b FROM %1"_s,
        u"SELECT DISTINCT TOP 5 a, b FROM %1 ORDER BY b"_s,
        u"SELECT a, Max(x.b) AS b FROM %1 AS x GROUP BY a HAVING Count(*) > 0"_s,
        u"SELECT a, b FROM %1 UNION SELECT a, b FROM t"_s,
        u"SELECT a, b FROM t WHERE a IN (SELECT a FROM %1)"_s,
        u"SELECT t.a, t.b FROM t WHERE EXISTS (SELECT a FROM %1)"_s,
        u"SELECT t.a, t.b FROM t WHERE a >= ALL (SELECT a FROM %1)"_s,
        u"SELECT t.a, t.b, (SELECT Max(a) FROM %1) AS m FROM t"_s,
        u"SELECT TOP 5 t.a, t.b, (SELECT Max(a) FROM %1) AS m FROM t ORDER BY b"_s,
        u"SELECT TOP 3 a, b FROM t WHERE a IN (SELECT TOP 2 x.a FROM %1 AS x WHERE x.b = t.b ORDER BY x.a) ORDER BY b"_s,
        u"SELECT t.a, x.b FROM t LEFT JOIN (SELECT TOP 5 a, b FROM %1 ORDER BY a) AS x ON t.a = x.a WHERE x.a > 0"_s,
    };
    for (const QString &kind : kinds) {
        QString inner = u"t"_s;
        for (int i = 0; i < 40; ++i) {
            const QString name = u"k%1_%2"_s.arg(&kind - kinds).arg(i);
            m_database.addQuery(name, kind.arg(inner));
            inner = name;
        }
        EXPECT_EQ(errorOf(u"SELECT * FROM "_s + inner), 0) << qPrintable(kind);
    }
}

TEST_F(HostileTest, LongTextsEndInGoodTime)
{
    QString names;
    for (int i = 0; i < 40000; ++i)
        names += u",p%1"_s.arg(i);
    EXPECT_EQ(errorOf(u"SELECT a FROM t WHERE a IN (1"_s + names + u')'), 3360) << "parameters";
    EXPECT_EQ(errorOf(u"SELECT '"_s + QString(5000000, u'x') + u'\''), 3360);
    EXPECT_EQ(errorOf(QString(5000000, u'(')), 3360);
    EXPECT_EQ(errorOf(u"SELECT "_s + u"1,"_s.repeated(3000) + u'1'), 3360) << "columns";
    EXPECT_EQ(errorOf(u"SELECT a FROM t WHERE "_s + QString(100000, u'x') + u" + "_s), 3075);
    EXPECT_EQ(errorOf(u"SELECT a FROM "_s + QString(100000, u'x')), 3078);
    EXPECT_EQ(errorOf(u"SELECT '"_s + QString(1000000, u'x')), 3075);
    EXPECT_EQ(errorOf(u"SELECT a FROM t WHERE a IN (1"_s + u",1"_s.repeated(300000) + u')'), 0);
    EXPECT_EQ(errorOf(u"SELECT a FROM t WHERE a = 1"_s + u" AND a > 0"_s.repeated(100000)), 0);
    EXPECT_EQ(errorOf(u"SELECT a FROM t WHERE a = 1"_s + u" OR a > 0 AND a < 2"_s.repeated(100000)), 0);
    QString unions = u"SELECT 1"_s;
    for (int i = 0; i < 3000; ++i)
        unions += u" UNION SELECT 1"_s;
    EXPECT_EQ(errorOf(unions), 3360);
}

TEST_F(HostileTest, CharactersOfNoAlphabetStandForThemselves)
{
    const QString odd = QString(QChar(0)) + QChar(1) + QChar(0xD800) + QChar(0xFFFF) + u'\n';
    EXPECT_EQ(m_database.run(u"SELECT Len('%1')"_s.arg(odd)).rows, QList<QStringList>{{u"5"_s}});
    EXPECT_EQ(m_database.run(u"SELECT AscW(Mid('%1', 2))"_s.arg(odd)).rows, QList<QStringList>{{u"1"_s}});
    EXPECT_EQ(errorOf(u"SELECT [%1]"_s.arg(odd)), 3061);
    EXPECT_EQ(errorOf(u"SELECT "_s + QChar(0) + u"1"), 3075);
    EXPECT_EQ(errorOf(u"SELECT 1 "_s + QChar(1)), 3075);
    // The placeholder of an unknown heading is a character that texts can contain.
    m_database.run(u"INSERT INTO t (a, b) VALUES (1, 'x')"_s);
    EXPECT_EQ(m_database.run(u"TRANSFORM First(a & '%1') SELECT b FROM t GROUP BY b PIVOT a"_s.arg(QChar(1))).rows,
              (QList<QStringList>{{u"x"_s, u"1"_s + QChar(1)}}));
}

TEST_F(HostileTest, NestsThatPeopleWriteWork)
{
    m_database.run(u"INSERT INTO t (a, b) VALUES (7, 'x')"_s);
    QString otherwise = u"'none'"_s;
    QString value = u"'all'"_s;
    QString both = u"'deep'"_s;
    QString replaced = u"b"_s;
    QString sum = u"a"_s;
    for (int i = 40; i > 0; --i) {
        otherwise = u"IIf(a = %1, 'n%1', %2)"_s.arg(i).arg(otherwise);
        value = u"IIf(a < %1 + 7, %2, 'not below %1')"_s.arg(i).arg(value);
        both = i % 2 ? u"IIf(a > 100 + %1, 'no', %2)"_s.arg(i).arg(both)
                     : u"IIf(a < 100 + %1, %2, 'no')"_s.arg(i).arg(both);
    }
    for (int i = 0; i < 26; ++i)
        replaced = u"Replace(%1, '%2', '%3')"_s.arg(replaced).arg(i).arg(i + 1);
    for (int i = 0; i < 26; ++i)
        sum = u"(%1 + 1) * 1"_s.arg(sum);
    const auto first = [this](const QString &expr) {
        return m_database.run(u"SELECT %1 FROM t"_s.arg(expr)).rows[0][0].toStdString();
    };
    EXPECT_EQ(first(otherwise), "n7");
    EXPECT_EQ(first(value), "all");
    EXPECT_EQ(first(both), "deep");
    EXPECT_EQ(first(replaced), "x");
    EXPECT_EQ(first(sum), "33");
    // A Null condition counts as false, wherever the CASE contains it.
    EXPECT_EQ(first(u"IIf(Null, IIf(True, 1, 2), 3)"_s), "3");
    EXPECT_EQ(first(u"IIf(a = 7, IIf(Null, 1, IIf(a = 7, 4, 5)), 3)"_s), "4");
    EXPECT_EQ(first(u"IIf(a = 8, IIf(a = 7, 1, 2), IIf(a = 7, 4, IIf(True, 5, 6)))"_s), "4");
}

TEST_F(HostileTest, AStoredQueryThatAsksForItselfByATextIsCircular)
{
    m_database.run(u"INSERT INTO t (a) VALUES (1)"_s);
    m_database.addQuery(u"q"_s, u"SELECT DSum('n', 'q' & Left('x', 0)) AS n FROM t"_s);
    EXPECT_EQ(errorOf(u"SELECT * FROM q"_s), dao::error::CircularQuery);
}

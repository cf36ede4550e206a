#include "EngineFixture.h"

#include <dao/values/CellFailure.h>

using namespace Qt::StringLiterals;
using dao::Value;

// Failures while a statement runs: which cells and rows they cost, where they are, and what the hint says.

using FailuresTest = EngineTest;

TEST_F(FailuresTest, ACellThatFailsLeavesTheOtherRows)
{
    m_database.execute(u"CREATE TABLE n (id LONG PRIMARY KEY, a DOUBLE, b DOUBLE)"_s);
    m_database.execute(u"INSERT INTO n VALUES (1, 6, 2)"_s);
    m_database.execute(u"INSERT INTO n VALUES (2, 6, 0)"_s);
    m_database.execute(u"INSERT INTO n VALUES (3, Null, 1)"_s);
    m_database.createQuery({u"Parts"_s, u"SELECT id, Sum(a) / Sum(b) AS part FROM n GROUP BY id"_s});
    m_database.createQuery({u"All"_s, u"SELECT id, a / b AS part FROM n UNION ALL SELECT id, 1 / (id - 1) FROM n"_s});
    const std::pair<QString, QString> shown[] = {
        {u"SELECT id, a / b AS x FROM n"_s, u"1|3\n2|#Div/0!\n3|-"_s},
        {u"SELECT id, CInt(a) * 2 & '!' AS x FROM n"_s, u"1|12!\n2|12!\n3|#Error"_s},
        {u"SELECT id, Exp(a * 1000) AS x FROM n WHERE id < 3 ORDER BY id DESC"_s, u"2|#Num!\n1|#Num!"_s},
        {u"SELECT id, IIf(b = 0, 0, a / b) AS x, (a / b) Is Null AS y FROM n"_s, u"1|3|0\n2|0|#Div/0!\n3|-|-1"_s},
        {u"SELECT id, Nz(a / b, 9) AS x FROM n"_s, u"1|3\n2|#Div/0!\n3|9"_s},
        {u"SELECT TOP 2 id, a / b AS x FROM n ORDER BY id DESC"_s, u"3|-\n2|#Div/0!"_s},
        {u"SELECT id, Sum(a) / Sum(b) AS x FROM n GROUP BY id ORDER BY id"_s, u"1|3\n2|#Div/0!\n3|-"_s},
        {u"SELECT id, part, part + 1 AS x FROM Parts ORDER BY id"_s, u"1|3|4\n2|#Div/0!|#Div/0!\n3|-|-"_s},
        {u"SELECT * FROM All WHERE id < 3"_s, u"1|3\n2|#Div/0!\n1|#Div/0!\n2|1"_s},
        {u"SELECT id, (SELECT 6 / x.b FROM n AS x WHERE x.id = n.id) AS x FROM n"_s, u"1|3\n2|#Div/0!\n3|6"_s},
        {u"SELECT id, (SELECT a FROM n AS x WHERE x.id <= n.id) AS x FROM n WHERE id < 3"_s, u"1|6\n2|#Error"_s},
        {u"TRANSFORM Sum(a) / Sum(b) SELECT 1 / (id - 3) AS x FROM n GROUP BY 1 / (id - 3), id PIVOT id IN (2)"_s, {}},
        {u"TRANSFORM Sum(a) / Sum(b) SELECT id FROM n GROUP BY id PIVOT 'all'"_s, u"1|3\n2|#Div/0!\n3|-"_s},
    };
    for (const auto &[sql, expected] : shown) {
        for (const auto type : {dao::Recordset::Type::Dynaset, dao::Recordset::Type::Snapshot}) {
            try {
                EXPECT_EQ(rows(sql, type).section(u'\n', 1), expected) << qPrintable(sql);
            } catch (const dao::DaoException &exception) {
                EXPECT_TRUE(expected.isEmpty() && exception.number() == 11) << qPrintable(sql) << exception.what();
            }
        }
    }
    // In conditions, sorting, grouping and changes a failure ends the statement.
    for (const QString &sql :
         {u"SELECT id FROM n WHERE a / b > 1"_s, u"SELECT id, a / b AS x FROM n ORDER BY a / b"_s,
          u"SELECT DISTINCT a / b AS x FROM n"_s, u"SELECT Count(*) FROM n GROUP BY a / b"_s,
          u"SELECT Sum(a / b) AS x FROM n"_s, u"SELECT id FROM Parts WHERE part > 1"_s,
          u"SELECT id FROM Parts ORDER BY part"_s, u"SELECT a / b AS x FROM n UNION SELECT 1 FROM n"_s,
          u"SELECT id FROM n WHERE a IN (SELECT part FROM Parts)"_s, u"SELECT DMax('a / b', 'n') AS x FROM n"_s})
        EXPECT_EQ(errorOf(sql), 11) << qPrintable(sql);
    EXPECT_THROW(m_database.execute(u"SELECT id, a / b AS x INTO made FROM n"_s), dao::DaoException);
    EXPECT_THROW(m_database.execute(u"INSERT INTO n (id, a) SELECT id + 10, part FROM Parts"_s), dao::DaoException);
    EXPECT_THROW(m_database.execute(u"UPDATE n SET a = a / b"_s), dao::DaoException);
    EXPECT_EQ(rows(u"SELECT Count(*) AS c FROM n"_s), u"c\n3"_s);
}

TEST_F(FailuresTest, FailuresOfARunHaveThePlaceOfTheirExpression)
{
    m_database.execute(u"CREATE TABLE n (id LONG PRIMARY KEY, a DOUBLE, b DOUBLE, t TEXT(5))"_s);
    for (const QString &row : {u"(1, 6, 2, 'x')"_s, u"(2, 6, 0, '12')"_s, u"(3, Null, 1, Null)"_s})
        m_database.execute(u"INSERT INTO n VALUES "_s + row);
    m_database.createQuery({u"Parts"_s, u"SELECT id, a / b AS part FROM n"_s});
    m_database.createQuery({u"Few"_s, u"SELECT id FROM n WHERE a / b > 1"_s});
    // The text between the marks is the failed expression.
    const std::pair<QString, int> cases[] = {
        {u"SELECT id FROM n\nWHERE id > 0 And «a / b» > 1"_s, 11},
        {u"SELECT id, 1 / b AS y FROM n ORDER BY id + «a / b»"_s, 11},
        {u"SELECT Count(*) FROM n GROUP BY «a / b»"_s, 11},
        {u"SELECT Sum(«a / b») AS x FROM n"_s, 11},
        {u"SELECT DISTINCT «CInt(t)» AS x FROM n"_s, 13},
        {u"SELECT id FROM n WHERE Len(t) > 0 And 2 * «CLng(t)» > 1"_s, 13},
        {u"SELECT id FROM n WHERE id = «(SELECT id FROM n AS m WHERE m.id < 3)»"_s, 3354},
        {u"SELECT id FROM Parts WHERE «part» > 1"_s, 11},
        {u"SELECT * FROM «Few»"_s, 11},
        {u"SELECT «a / b» AS x FROM n UNION SELECT 1 FROM n"_s, 11},
        {u"TRANSFORM Sum(a) SELECT id FROM n WHERE «a / b» > 1 GROUP BY id PIVOT t IN ('x')"_s, 11},
        {u"UPDATE n SET a = 1, b = «a / b» WHERE id > 0"_s, 11},
        {u"UPDATE n INNER JOIN n AS m ON n.id = m.id SET n.a = «m.a / m.b»"_s, 11},
        {u"DELETE FROM n WHERE «a / b» > 1"_s, 11},
        {u"INSERT INTO n (id, a) SELECT id + 10, «a / b» FROM n"_s, 11},
        {u"INSERT INTO n (id, a) VALUES (9, 1 + «5 / [none]»)"_s, 11},
        {u"SELECT id, «a / b» AS x INTO made FROM n"_s, 11},
    };
    for (const auto &[marked, number] : cases) {
        QString sql = marked;
        const qsizetype start = sql.indexOf(u'«');
        sql.remove(start, 1);
        const qsizetype length = sql.indexOf(u'»') - start;
        sql.remove(start + length, 1);
        try {
            dao::QueryDef query(m_database, sql);
            for (int i = 0; i < query.parameterCount(); ++i)
                query.setParameter(i, Value::fromLong(0));
            if (query.returnsRows()) {
                dao::Recordset set(m_database);
                for (set.open(dao::Recordset::Type::Snapshot, query); !set.isEof();)
                    set.moveNext();
            } else {
                query.execute();
            }
            ADD_FAILURE() << qPrintable(sql);
        } catch (const dao::DaoException &exception) {
            EXPECT_EQ(exception.number(), number) << qPrintable(sql);
            const QString found = sql.mid(exception.where().start, exception.where().length);
            EXPECT_EQ(found.toStdString(), sql.mid(start, length).toStdString()) << qPrintable(sql);
            EXPECT_EQ(exception.where().start, start) << qPrintable(sql);
            EXPECT_EQ(exception.where().line, sql.left(start).count(u'\n') + 1) << qPrintable(sql);
        }
    }
    EXPECT_EQ(rows(u"SELECT Count(*) AS c, Sum(a) AS s FROM n"_s), u"c|s\n3|12"_s) << "nothing was changed";

    // requery() of an open result.
    dao::Recordset again(m_database);
    again.open(dao::Recordset::Type::Dynaset, u"SELECT id FROM n WHERE id = 1 And a / b > 1"_s);
    m_database.execute(u"UPDATE n SET b = 0"_s);
    try {
        again.requery();
        ADD_FAILURE();
    } catch (const dao::DaoException &exception) {
        EXPECT_EQ(exception.where().column, 35);
    }
}

TEST_F(FailuresTest, HintsNameWhatTheTextCanName)
{
    const auto hintOf = [this](const QString &sql) {
        try {
            rows(sql);
        } catch (const dao::DaoException &exception) {
            return QString(QString::number(exception.number()) + u' ' + exception.hint());
        }
        return QString();
    };
    EXPECT_EQ(hintOf(u"SELECT id FROM sales WHERE area = VOL"_s), u"3061 If VOL is a text, it needs quotes: 'VOL'."_s);
    EXPECT_EQ(hintOf(u"SELECT id FROM sales WHERE area = [VOL]"_s), u"3061 "_s) << "meant as a parameter";
    EXPECT_EQ(hintOf(u"SELECT id FROM sales WHERE id = VOL"_s), u"3061 "_s) << "no text is expected";
    m_database.execute(u"CREATE TABLE marks (place LONG PRIMARY KEY, kind TEXT(5))"_s);
    m_database.createQuery({u"Marked"_s, u"SELECT place AS at, kind FROM marks"_s});
    try {
        m_database.execute(u"UPDATE sales LEFT JOIN Marked AS m ON sales.id = m.at SET m.kind = 'x'"_s);
        ADD_FAILURE();
    } catch (const dao::DaoException &exception) {
        EXPECT_EQ(exception.number(), 3073);
        EXPECT_TRUE(exception.hint().startsWith(u"The join has rows without one of 'm'. Set m.at as well"_s))
            << qPrintable(exception.hint());
    }
}

TEST_F(FailuresTest, WhatIsComputedKeepsToTheLimitsOfItsType)
{
    const std::pair<QString, int> cases[] = {
        {u"SELECT 1E308 * 10 AS x"_s, 6},
        {u"SELECT amount * 1E308 * 10 AS x FROM sales"_s, 6},
        {u"SELECT Sum(amount * 1E308) AS x FROM sales"_s, 6},
        {u"SELECT DISTINCT amount * 1E308 AS x FROM sales"_s, 6},
        {u"SELECT #12/31/9999# + 5 AS x"_s, 5},
        {u"SELECT #1/1/100# - amount AS x FROM sales"_s, 5},
    };
    for (const auto &[sql, number] : cases) {
        EXPECT_EQ(rows(sql).section(u'\n', 1).section(u'\n', 0, 0), dao::failureWord(number)) << qPrintable(sql);
        QString into = sql;
        into.replace(u" AS x"_s, u" AS x INTO made"_s);
        int failure = 0;
        try {
            m_database.execute(into);
        } catch (const dao::DaoException &exception) {
            failure = exception.number();
        }
        EXPECT_EQ(failure, number == 5 ? 3349 : number) << qPrintable(into);
        EXPECT_FALSE(m_database.hasTable(u"made"));
    }
    EXPECT_EQ(rows(u"SELECT #12/31/9999 11:59:59 PM# + 0 AS a, #1/1/100# + 0 AS b"_s),
              u"a|b\n12/31/9999 11:59:59 PM|1/1/0100"_s);
}

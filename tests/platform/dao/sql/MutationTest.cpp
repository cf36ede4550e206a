#include "TestDatabase.h"

#include <dao/Explain.h>
#include <dao/sql/ast/Token.h>
#include <dao/sql/Compiler.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;

// Statements with one token removed, doubled or exchanged with its neighbour: each must fail with a number and a text,
// or compile to SQL that SQLite can prepare. SQL that SQLite refuses is a bug of the generator.

namespace {

class MutationTest : public testing::Test
{
protected:
    MutationTest()
    {
        m_database.run(
            u"CREATE TABLE t (id COUNTER PRIMARY KEY, a SHORT, b TEXT(20), c CURRENCY, d DATE, f BOOLEAN, s SINGLE, [desc] MEMO)"_s);
        m_database.run(u"CREATE TABLE u (id LONG PRIMARY KEY, x LONG, b TEXT(20))"_s);
        m_database.addQuery(u"q"_s, u"SELECT id, a * 2 AS twice, b FROM t WHERE a > 0 ORDER BY a"_s);
        m_database.addQuery(u"g"_s, u"SELECT b, Sum(c) AS total FROM t GROUP BY b"_s);
    }

    void check(const QString &sql)
    {
        try {
            const CompiledStatement compiled = compile(m_database, sql);
            if (const auto *select = std::get_if<SelectPlan>(&compiled.plan)) {
                if (select->crosstab) {
                    prepare(select->crosstab->valuesSql, sql);
                    prepare(withHeadings(*select, {{u"x"_s, u"'x'"_s}, {u"<>"_s, u"NULL"_s}}).fullSql, sql);
                    return;
                }
                prepare(select->fullSql, sql);
                if (select->keyed) {
                    prepare(select->keySql, sql);
                    prepare(select->rowSql, sql);
                }
                if (!select->addedKeySql.isEmpty()) {
                    prepare(select->addedKeySql, sql);
                    prepare(select->addedRowSql, sql);
                }
            } else if (const auto *action = std::get_if<ActionPlan>(&compiled.plan)) {
                prepare(action->steps.constFirst().sql, sql);
            }
        } catch (const dao::DaoException &exception) {
            EXPECT_FALSE(exception.description().isEmpty());
            EXPECT_LE(exception.where().start + exception.where().length, sql.size());
        }
    }

    void prepare(const QString &inner, const QString &sql)
    {
        EXPECT_NO_THROW(dao::queryPlan(m_database.database, inner)) << qPrintable(sql + u"\n  "_s + inner);
    }

    TestDatabase m_database;
};

} // namespace

TEST_F(MutationTest, NoTextBecomesSomethingThatTheInnerEngineRefuses)
{
    const QString statements[] = {
        u"SELECT t.a, b & 'x' AS n, c * 2, - a, (SELECT Max(x) FROM u WHERE u.id = t.id) FROM t WHERE a Between 1 And 5 And Not f"_s,
        u"SELECT TOP 3 b, Count(*), Sum(c) / 2, First(d) FROM t WHERE d > #1/2/2003# GROUP BY b, a + 1 HAVING Max(a) > 2 ORDER BY b DESC, 2"_s,
        u"SELECT DISTINCT TOP 50 PERCENT UCase(b), a FROM t ORDER BY UCase(b), 2 DESC"_s,
        u"SELECT * FROM (t AS k LEFT JOIN (u INNER JOIN q ON u.id = q.id) ON k.id = u.x) INNER JOIN g ON g.b = k.b"_s,
        u"SELECT DISTINCTROW t.* FROM t INNER JOIN u ON t.id = u.id, g WHERE t.b In (SELECT b FROM u) Or t.a Not In (1, 2, [p])"_s,
        u"SELECT IIf(a > 1, t.b, 5), Switch(f, 1, True, 2), Choose(a, 1, 2), Nz(a, 0), Format(d, 'yyyy'), Left(q.b, 2) FROM q, t"_s,
        u"SELECT a, b FROM t WHERE b Like 'a*' UNION ALL SELECT x, b FROM u UNION (SELECT 1, 2) ORDER BY 1 DESC, b"_s,
        u"SELECT a FROM t WHERE a > ALL (SELECT x FROM u) And Exists (SELECT * FROM u WHERE u.x = t.a) Xor a = ANY (SELECT id FROM u)"_s,
        u"TRANSFORM Count(*) SELECT b, Sum(c) AS s FROM t WHERE a Is Not Null GROUP BY b ORDER BY b PIVOT a Mod 3"_s,
        u"INSERT INTO t (a, b, c, d, f) SELECT x, id, x \\ 2, [p], b = 'y' FROM u WHERE x <> 3 ORDER BY id"_s,
        u"INSERT INTO u (id, x, b) VALUES (1 + [n], '5', Date() & Null)"_s,
        u"UPDATE t INNER JOIN u ON t.id = u.id SET t.a = u.x, t.b = u.b & t.b, u.x = t.c WHERE u.x > 2"_s,
        u"UPDATE t SET a = a + 1, desc = 'x', f = Not f, s = DMax('x', 'u') WHERE b Is Null"_s,
        u"DELETE t.* FROM t LEFT JOIN u ON t.id = u.id WHERE u.id Is Null"_s,
    };
    for (const QString &statement : statements) {
        ASSERT_NO_THROW(compile(m_database, statement)) << statement.toStdString();
        check(statement);
        const QList<ast::Token> tokens = ast::tokenize(statement);
        const auto text = [&statement](const ast::Token &token) {
            return statement.mid(token.range.start, token.range.length);
        };
        for (qsizetype i = 0; i + 1 < tokens.size(); ++i) {
            const ast::Range range = tokens[i].range;
            check(QString(statement).remove(range.start, range.length));
            check(QString(statement).insert(range.start, text(tokens[i]) + u' '));
            const ast::Range both = range.to(tokens[i + 1].range);
            check(QString(statement).replace(both.start, both.length, text(tokens[i + 1]) + u' ' + text(tokens[i])));
        }
    }
}

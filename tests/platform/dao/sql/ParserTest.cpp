#include <dao/sql/ast/Parser.h>
#include <dao/sql/Compiler.h>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;

TEST(ParserTest, NodesKnowTheirPlace)
{
    const QString text = u"  a + (b * 3)"_s;
    const std::shared_ptr<const ast::Expr> expr = ast::Parser(text).parseLoneExpression();
    const auto *sum = expr->as<ast::Binary>();
    ASSERT_TRUE(sum);
    EXPECT_EQ(text.mid(expr->range.start, expr->range.length), u"a + (b * 3"_s);
    EXPECT_EQ(text.mid(sum->right->range.start, sum->right->range.length), u"b * 3"_s);
}

TEST(ParserTest, SyntaxIsCheckedWithoutASchema)
{
    EXPECT_NO_THROW(checkSyntax(u"SELECT anything FROM anywhere WHERE Foo(1) = [x];"_s));
    EXPECT_NO_THROW(checkSyntax(u"PROCEDURE p [a] Long, [b] Text ( 20 ); UPDATE t SET a = [a] WHERE b = [b]"_s));
    EXPECT_NO_THROW(checkSyntax(u"CREATE UNIQUE INDEX i ON t (a DESC, b) WITH DISALLOW NULL"_s));
    EXPECT_NO_THROW(
        checkSyntax(u"CREATE TABLE t (a COUNTER PRIMARY KEY, b TEXT(20) WITH COMP NOT NULL, c DECIMAL(10,2) DEFAULT 0, "
                    "CONSTRAINT f FOREIGN KEY (b) REFERENCES u (x) ON UPDATE CASCADE ON DELETE CASCADE)"_s));
    EXPECT_NO_THROW(checkSyntax(u"ALTER TABLE t DROP COLUMN a"_s));
    EXPECT_NO_THROW(checkSyntax(u"SELECT a FROM t WITH OWNERACCESS OPTION;"_s));
    EXPECT_THROW(checkSyntax(u"SELECT a FROM t WHERE"_s), dao::DaoException);
    EXPECT_THROW(checkSyntax(u""_s), dao::DaoException);
    EXPECT_THROW(checkSyntax(u"BEGIN TRANSACTION"_s), dao::DaoException);
}

// Each prefix of a statement must be parsed or refused with a place inside it.
TEST(ParserTest, EveryPrefixOfAStatementEndsWell)
{
    const QString statements[] = {
        u"PARAMETERS [x] Long; SELECT DISTINCT TOP 5 PERCENT a.[b c], Count(*) AS n, (SELECT Max(x) FROM u) FROM (t AS "
        u"a LEFT JOIN u "
        "ON a.i = u.i) INNER JOIN [SELECT 1]. AS q ON q.z = a.z WHERE a Between 1 And #1/2/2003# Or Not b In ('x', "
        "\"y\") GROUP BY a HAVING "
        "Sum(c) > 1.5E3 ORDER BY 1 DESC WITH OWNERACCESS OPTION;"_s,
        u"TRANSFORM Sum(a) AS s SELECT b FROM t GROUP BY b PIVOT c IN (1, 'x')"_s,
        u"INSERT INTO t (a, b) SELECT x, y FROM u UNION ALL SELECT 1, &HFF"_s,
        u"UPDATE t INNER JOIN u ON t.a = u.a SET t.b = Left(u.c, 2) & '!' WHERE u.d Is Not Null"_s,
        u"ALTER TABLE t ADD CONSTRAINT c FOREIGN KEY (a) REFERENCES u (b) ON DELETE CASCADE"_s,
        u"CREATE PROCEDURE p ([x] Long) AS DELETE t.* FROM t WHERE a > ALL (SELECT b FROM u)"_s,
    };
    for (const QString &statement : statements) {
        EXPECT_NO_THROW(checkSyntax(statement)) << statement.toStdString();
        for (qsizetype length = 0; length < statement.size(); ++length) {
            try {
                checkSyntax(statement.first(length));
            } catch (const dao::DaoException &exception) {
                EXPECT_FALSE(exception.description().isEmpty());
                EXPECT_LE(exception.where().start + exception.where().length, length);
            }
        }
    }
}

#include <dao/sql/ast/Parser.h>
#include <dao/sql/Compiler.h>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;

namespace {

/// A tree as text in prefix notation with all parentheses.
std::string shape(const ast::Expr &expr);

std::string list(const std::vector<ast::ExprPtr> &items)
{
    std::string text;
    for (const ast::ExprPtr &item : items)
        text.append(" ").append(shape(*item));
    return text;
}

std::string shape(const ast::Expr &expr)
{
    static constexpr const char *operators[] = {"^", "*", "/",  "\\", "mod",  "+",     "-",   "&",   "=",  "<>",
                                                "<", ">", "<=", ">=", "like", "alike", "xor", "eqv", "imp"};
    if (const auto *literal = expr.as<ast::Literal>())
        return literal->value.isNull() ? "null"
                                       : dao::convertValue(literal->value, dao::DataType::Text).text().toStdString();
    if (const auto *name = expr.as<ast::Name>())
        return name->text.toStdString();
    if (const auto *unary = expr.as<ast::Unary>())
        return std::string(unary->op == ast::UnaryOp::Not     ? "(not "
                           : unary->op == ast::UnaryOp::Minus ? "(neg "
                                                              : "(pos ") +
               shape(*unary->operand) + ")";
    if (const auto *binary = expr.as<ast::Binary>())
        return std::string("(") + operators[int(binary->op)] + " " + shape(*binary->left) + " " +
               shape(*binary->right) + ")";
    if (const auto *chain = expr.as<ast::Chain>())
        return std::string(chain->isAnd ? "(and" : "(or") + list(chain->terms) + ")";
    if (const auto *call = expr.as<ast::Call>())
        return std::string("(") + call->name.toStdString() + list(call->arguments) + (call->star ? " *)" : ")");
    if (const auto *between = expr.as<ast::Between>())
        return std::string(between->negated ? "(not-between " : "(between ") + shape(*between->operand) + " " +
               shape(*between->low) + " " + shape(*between->high) + ")";
    if (const auto *in = expr.as<ast::InList>())
        return std::string(in->negated ? "(not-in " : "(in ") + shape(*in->operand) + list(in->items) + ")";
    if (const auto *isNull = expr.as<ast::IsNull>())
        return std::string(isNull->negated ? "(not-null " : "(null ") + shape(*isNull->operand) + ")";
    return expr.as<ast::ImpliedField>() ? "_" : "?";
}

std::string parsed(const QString &text)
{
    return shape(*ast::Parser(text).parseLoneExpression());
}

std::string criterion(const QString &text)
{
    return shape(*ast::Parser(text).parseCriterion());
}

} // namespace

TEST(ParserTest, OperatorsBindInTheOrderOfTheDialect)
{
    EXPECT_EQ(parsed(u"-a ^ 2 ^ b"_s), "(neg (^ (^ a 2) b))");
    EXPECT_EQ(parsed(u"a + b * c \\ d Mod e & f"_s), "(& (+ a (mod (\\ (* b c) d) e)) f)");
    EXPECT_EQ(parsed(u"a = b & c Like d"_s), "(like (= a (& b c)) d)");
    EXPECT_EQ(parsed(u"Not a = b And c Or d Xor e Eqv f Imp g"_s),
              "(imp (eqv (xor (or (and (not (= a b)) c) d) e) f) g)");
    EXPECT_EQ(parsed(u"a And b And c Or d And e"_s), "(or (and a b c) (and d e))");
    EXPECT_EQ(parsed(u"a Between 1 And 2 And b"_s), "(and (between a 1 2) b)");
    EXPECT_EQ(parsed(u"a Not In (1, 2) = b"_s), "(= (not-in a 1 2) b)");
    EXPECT_EQ(parsed(u"a Is Not Null And b Is Null"_s), "(and (not-null a) (null b))");
    EXPECT_EQ(parsed(u"a - -b - c"_s), "(- (- a (neg b)) c)");
}

TEST(ParserTest, WordsOfTheGrammarAreNamesWhereTheyCanBeNothingElse)
{
    EXPECT_EQ(parsed(u"ra.index + r.desc"_s), "(+ ra.index r.desc)");
    EXPECT_EQ(parsed(u"desc & index & Left & [select]"_s), "(& (& (& desc index) Left) select)");
    EXPECT_EQ(parsed(u"Left(a, 2) & Right$(b, 1)"_s), "(& (Left a 2) (Right$ b 1))");
    EXPECT_EQ(parsed(u"[a b].[c d] + `e f`"_s), "(+ a b.c d e f)");
    EXPECT_EQ(parsed(u"Forms!F!C = [Forms]![F]![C]"_s), "(= Forms!F!C Forms!F!C)");
    EXPECT_EQ(parsed(u"@p + Count(*)"_s), "(+ @p (Count *))");
}

TEST(ParserTest, CriteriaOfRulesImplyTheField)
{
    EXPECT_EQ(criterion(u">= 0 and <= 999"_s), "(and (>= _ 0) (<= _ 999))");
    EXPECT_EQ(criterion(u"5"_s), "(= _ 5)");
    EXPECT_EQ(criterion(u"'M' Or Not 'F'"_s), "(or (= _ M) (not (= _ F)))");
    EXPECT_EQ(criterion(u"Is Null Or Like 'a*'"_s), "(or (null _) (like _ a*))");
    EXPECT_EQ(criterion(u"Between 1 And 5"_s), "(between _ 1 5)");
}

TEST(ParserTest, NodesKnowTheirPlace)
{
    const QString text = u"  a + (b * 3)"_s;
    const ast::ExprPtr expr = ast::Parser(text).parseLoneExpression();
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

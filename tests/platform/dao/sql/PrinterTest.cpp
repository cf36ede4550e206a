#include "RoundTrip.h"
#include "TestDatabase.h"

#include <dao/sql/ast/Parser.h>
#include <dao/sql/ast/Printer.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;

namespace {

struct Printed
{
    const char *given;
    const char *expected;
};

std::string expression(const char *text)
{
    return ast::printExpression(*ast::Parser(QString::fromUtf8(text)).parseLoneExpression()).toStdString();
}

std::string statement(const char *text)
{
    return ast::printStatement(ast::Parser(QString::fromUtf8(text)).parseStatement()).toStdString();
}

} // namespace

TEST(PrinterTest, ParenthesesStandWhereTheMeaningAsksForThem)
{
    const Printed cases[] = {
        {"((a + b)) * (c * d)", "(a + b) * (c * d)"},
        {"(a * b) + (c - d) - (e - f)", "a * b + (c - d) - (e - f)"},
        {"a \\ ((b Mod c) / d)", "a \\ (b Mod c) / d"},
        {"(-2) ^ 2 + -2 ^ 2", "(-2) ^ 2 + -2 ^ 2"},
        {"2 ^ -1 ^ (3 ^ 2)", "2 ^ (-1) ^ (3 ^ 2)"},
        {"- - a - -b - (-c)", "- -a - -b - -c"},
        {"(a & b) + c & d", "(a & b) + c & d"},
        {"a Or (b Or c) And (d Or e)", "a Or (b Or c) And (d Or e)"},
        {"(a And b) Or (c And d)", "a And b Or c And d"},
        {"not(a = b) and not a", "Not a = b And Not a"},
        {"(Not a) = b", "(Not a) = b"},
        {"a Not Like 'x*' = b", "(Not a Like 'x*') = b"},
        {"a = (b = c) = d", "a = (b = c) = d"},
        {"a Imp (b Imp c) Eqv d Xor e", "a Imp (b Imp c) Eqv d Xor e"},
        {"a Between (b Or c) And d And e", "a Between (b Or c) And d And e"},
        {"a Not Between 1 And 2 Is Null", "a Not Between 1 And 2 Is Null"},
        {"a Not In (1, (2), 3 + 4) Is Not Null", "a Not In (1, 2, 3 + 4) Is Not Null"},
        {"1 + Not a", "1 + (Not a)"},
    };
    for (const Printed &test : cases) {
        EXPECT_EQ(expression(test.given), test.expected);
        EXPECT_EQ(expression(test.expected), test.expected);
    }
}

TEST(PrinterTest, NamesAndLiteralsAreWrittenAsTheyAreRead)
{
    const Printed cases[] = {
        {"[row] + [a b] + `x]y` + [12]", "row + [a b] + `x]y` + [12]"},
        {"[desc] & [t].[desc] & t.[a.b]![c]", "[desc] & t.desc & t.[a.b]!c"},
        {"forms![F]![a-b]", "forms!F![a-b]"},
        {"[Left] & LEFT(a, 1) & left$(b, 1)", "[Left] & LEFT(a, 1) & left$(b, 1)"},
        {"count ( * ) + @p + \u00e4", "count(*) + @p + \u00e4"},
        {"x = (Any(1))", "x = (Any(1))"},
        {"&HFFFF + &H10 + &H80000000", "&HFFFF + 16 + &H80000000"},
        {"1. + .5 + 1e3 + 2147483648 + 1e300 + 0.1", "1.0 + 0.5 + 1000.0 + 2147483648.0 + 1e+300 + 0.1"},
        {"\"it's\" & 'a\"b'", "'it''s' & 'a\"b'"},
        {"#2003-02-01# - #7:05 pm# - #1 Feb 1850 0:00:01#", "#2/1/2003# - #7:05:00 PM# - #2/1/1850 12:00:01 AM#"},
        {"#0:00# + #12/30/1899#", "#12/30/1899# + #12/30/1899#"},
        {"yes Or off Or null", "True Or False Or Null"},
    };
    for (const Printed &test : cases) {
        EXPECT_EQ(expression(test.given), test.expected);
        EXPECT_EQ(expression(test.expected), test.expected);
    }
}

TEST(PrinterTest, StatementsOfEveryKind)
{
    const Printed cases[] = {
        {"parameters [x y] long, z text ( 20 ), v value; select distinct top 5 percent t.*, *, a+1 as [sum] from t u, "
         "(select 1 as one) where a=1 group by a, b+1 having count(*)>1 order by 1, a desc with owneraccess option",
         "PARAMETERS [x y] LONG, z TEXT, v VALUE;\nSELECT DISTINCT TOP 5 PERCENT t.*, *, a + 1 AS sum\nFROM t AS u, "
         "(SELECT 1 AS one)\nWHERE a = 1\nGROUP BY a, b + 1\nHAVING count(*) > 1\nORDER BY 1, a DESC;"},
        {"select * from a inner join b on a.x=b.x left outer join (c right join d on c.y=d.y) on b.z=c.z",
         "SELECT *\nFROM (a INNER JOIN b ON a.x = b.x) LEFT JOIN (c RIGHT JOIN d ON c.y = d.y) ON b.z = c.z;"},
        {"select a from [select b as a from t where b>1]. as q where exists(select * from u where a in (select x from "
         "v)) and a>=some(select 1) and a<all(select 2) and (select max(x) from u)=3",
         "SELECT a\nFROM (SELECT b AS a FROM t WHERE b > 1) AS q\nWHERE Exists (SELECT * FROM u WHERE a In (SELECT x "
         "FROM v)) And a >= ANY (SELECT 1) And a < ALL (SELECT 2) And (SELECT max(x) FROM u) = 3;"},
        {"table t union all (select a from b order by a) union select distinctrow c from e order by 1 desc",
         "TABLE t\nUNION ALL (SELECT a FROM b ORDER BY a)\nUNION SELECT DISTINCTROW c\nFROM e\nORDER BY 1 "
         "DESC;"},
        {"transform sum(a) as s select b from t group by b pivot c & d in ('x', null)",
         "TRANSFORM sum(a) AS s\nSELECT b\nFROM t\nGROUP BY b\nPIVOT c & d IN ('x', Null);"},
        {"transform sum(a) select b from t group by b pivot (c = 1)",
         "TRANSFORM sum(a)\nSELECT b\nFROM t\nGROUP BY b\nPIVOT (c = 1);"},
        {"insert into t select a from u where a=1", "INSERT INTO t\nSELECT a\nFROM u\nWHERE a = 1;"},
        {"update distinctrow t inner join u on t.a=u.a set t.b=u.b, c=null where d",
         "UPDATE t INNER JOIN u ON t.a = u.a\nSET t.b = u.b, c = Null\nWHERE d;"},
        {"execute q 1, 'x'", "EXECUTE q 1, 'x';"},
        {"procedure p [a] long; delete * from t where b=[a]", "PARAMETERS a LONG;\nDELETE *\nFROM t\nWHERE b = a;"},
        {"create table t (id counter primary key, a text(10) with comp default 'x' not null, b varchar, c money "
         "constraint r references u (x) on delete cascade on update cascade, unique (a), constraint f foreign key (a, "
         "b) references v, check (a<>b), constraint n not null (c))",
         "CREATE TABLE t (id COUNTER PRIMARY KEY, a TEXT(10) NOT NULL DEFAULT 'x', b TEXT(255), c CURRENCY CONSTRAINT "
         "r REFERENCES u (x) ON UPDATE CASCADE ON DELETE CASCADE, UNIQUE (a), CONSTRAINT f FOREIGN KEY (a, b) "
         "REFERENCES v, CHECK (a<>b), CONSTRAINT n NOT NULL (c));"},
        {"drop index i on t", "DROP INDEX i ON t;"},
        {"drop procedure q", "DROP VIEW q;"},
        {"create view v as select  a from t;", "CREATE PROCEDURE v AS\nselect  a from t;"},
        {"create procedure p ([x] long) as delete from t where a=[x]",
         "CREATE PROCEDURE p AS\nPARAMETERS [x] long;\ndelete from t where a=[x]"},
    };
    for (const Printed &test : cases) {
        EXPECT_EQ(statement(test.given), test.expected);
        EXPECT_EQ(statement(test.expected), test.expected);
    }
}

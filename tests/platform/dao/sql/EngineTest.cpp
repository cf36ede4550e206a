#include "EngineFixture.h"

using namespace Qt::StringLiterals;
using dao::Value;

TEST_F(EngineTest, ACrossTableTakesItsColumnsFromItsData)
{
    const QString sql = u"TRANSFORM Sum(amount) SELECT who FROM sales GROUP BY who PIVOT area"_s;
    EXPECT_EQ(rows(sql), u"who|North|South\nAnn|10|5\nBob|7.25|-"_s);
    EXPECT_EQ(rows(sql, dao::Recordset::Type::Snapshot), u"who|North|South\nAnn|10|5\nBob|7.25|-"_s);
    m_database.createQuery({u"Areas"_s, sql});
    EXPECT_EQ(rows(u"Areas"_s), rows(sql));
    m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES ('Bob', 'East', 1)"_s);
    EXPECT_EQ(rows(u"Areas"_s), u"who|East|North|South\nAnn|-|10|5\nBob|1|7.25|-"_s);
}

TEST_F(EngineTest, AChangeSeesTheRowsAsTheyWereBeforeIt)
{
    m_database.execute(u"CREATE TABLE du (g TEXT(5), n LONG)"_s);
    const auto fill = [this] {
        m_database.execute(u"DELETE FROM du"_s);
        for (int i = 0; i < 3; ++i)
            m_database.execute(u"INSERT INTO du (g, n) VALUES ('a', 0)"_s);
    };
    const auto left = [this] { return rows(u"SELECT g & n AS c FROM du"_s); };
    fill();
    EXPECT_EQ(m_database.execute(u"UPDATE du SET g = 'c' WHERE (SELECT Count(*) FROM du AS u WHERE u.g = du.g) > 2"_s),
              3);
    EXPECT_EQ(left(), u"c\nc0\nc0\nc0"_s);
    EXPECT_EQ(m_database.execute(u"UPDATE du SET g = 'd', n = 1 WHERE DCount('*', 'du', 'g=''' & g & '''') > 2"_s), 3);
    EXPECT_EQ(m_database.execute(u"UPDATE du SET n = n + DCount('*', 'du', 'n=' & n)"_s), 3);
    EXPECT_EQ(left(), u"c\nd4\nd4\nd4"_s);
    EXPECT_EQ(m_database.execute(u"DELETE FROM du WHERE DCount('*', 'du', 'g=''' & g & '''') > 1"_s), 3);
    fill();
    EXPECT_EQ(m_database.execute(u"DELETE FROM du WHERE (SELECT Count(*) FROM du AS u WHERE u.g = du.g) > 1"_s), 3);
    const QString absent =
        u"INSERT INTO du (g, n) SELECT 'n', id FROM sales WHERE DCount('*', 'du', 'n>' & id - id) = 0"_s;
    EXPECT_EQ(m_database.execute(absent), 3);
    EXPECT_EQ(m_database.execute(absent), 0);
}

TEST_F(EngineTest, ACrossTableIsReadByOtherQueries)
{
    m_database.createQuery({u"Areas"_s, u"TRANSFORM Sum(amount) SELECT who FROM sales GROUP BY who PIVOT area"_s});
    const QString north = u"SELECT who, North FROM Areas WHERE South Is Null"_s;
    EXPECT_EQ(rows(u"SELECT * FROM Areas ORDER BY who DESC"_s), u"who|North|South\nBob|7.25|-\nAnn|10|5"_s);
    EXPECT_EQ(rows(north), u"who|North\nBob|7.25"_s);
    EXPECT_EQ(rows(u"SELECT a.who, b.South FROM Areas AS a INNER JOIN Areas AS b ON a.North > b.North"_s),
              u"who|South\nAnn|-"_s);
    dao::QueryDef query(m_database, u"SELECT * FROM Areas WHERE North > [least]"_s);
    query.setParameter(0, Value::fromDouble(8));
    EXPECT_EQ(query.fieldCount(), 3) << "a name that is not found is a parameter of the query around it";
    // The columns are those of the data when the statement runs.
    m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES ('Bob', 'East', 1)"_s);
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Dynaset, query);
    EXPECT_EQ(set.fieldCount(), 4);
    m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES ('Ann', 'West', 1)"_s);
    set.requery();
    EXPECT_EQ(set.fieldCount(), 5);
    EXPECT_EQ(set.recordCount(), 1);
    EXPECT_EQ(m_database.execute(u"SELECT * INTO kept FROM Areas"_s), 2);
    EXPECT_EQ(rows(u"SELECT * FROM kept WHERE East = 1"_s), u"who|East|North|South|West\nBob|1|7.25|-|-"_s);
}

TEST_F(EngineTest, ColumnsOfACrossTableCanDependOnParameters)
{
    m_database.createQuery({u"Above"_s, u"PARAMETERS [least] Currency; TRANSFORM Sum(amount) SELECT who FROM sales "
                                        "WHERE amount > [least] GROUP BY who PIVOT area"_s});
    EXPECT_EQ(errorOf(u"SELECT * FROM Above"_s), 3061);
    dao::QueryDef query(m_database, u"SELECT a.who, North + [more] AS sum FROM Above AS a WHERE a.North > 0"_s);
    ASSERT_EQ(query.parameterCount(), 1) << "names that may be columns are not asked for";
    query.setParameter(0, Value::fromDouble(1));
    ASSERT_EQ(query.parameterCount(), 2);
    EXPECT_EQ(query.parameter(1).name, u"more"_s);
    query.setParameter(u"more"_s, Value::fromDouble(2));
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Dynaset, query);
    EXPECT_EQ(set.recordCount(), 2);
    EXPECT_EQ(set.value(1).real(), 12);
    // Without rows there is no column "North": the name is a parameter.
    query.setParameter(0, Value::fromDouble(99));
    EXPECT_EQ(query.parameterCount(), 4);
    query.setParameter(0, Value::fromDouble(8));
    EXPECT_EQ(query.parameterCount(), 2);
    set.open(dao::Recordset::Type::Snapshot, query);
    EXPECT_EQ(set.value(0).text(), u"Ann"_s);
}

TEST_F(EngineTest, ExecuteOfAQueryWithRowsReturnsThem)
{
    m_database.createQuery({u"Of"_s, u"PARAMETERS [name] Text; SELECT id, amount FROM sales WHERE who = [name]"_s});
    m_database.createQuery({u"OfBob"_s, u"EXECUTE Of 'Bob'"_s});
    m_database.createQuery({u"Above"_s, u"PARAMETERS [least] Currency; TRANSFORM Sum(amount) SELECT who FROM sales "
                                        "WHERE amount > [least] GROUP BY who PIVOT area"_s});
    m_database.createQuery({u"Part"_s, u"PARAMETERS [by] Long; SELECT id FROM sales WHERE amount / [by] > 1"_s});
    EXPECT_EQ(rows(u"EXECUTE Of 'Bob'"_s), u"id|amount\n3|7.25"_s);
    EXPECT_EQ(rows(u"EXECUTE OfBob"_s, dao::Recordset::Type::Snapshot), u"id|amount\n3|7.25"_s);
    EXPECT_EQ(rows(u"EXECUTE Above 5 + 1"_s), u"who|North\nAnn|10\nBob|7.25"_s);
    EXPECT_EQ(errorOf(u"EXECUTE Of [whose]"_s), 3061);
    EXPECT_EQ(errorOf(u"EXECUTE Part 0"_s), 11);

    dao::QueryDef query(m_database, u"EXECUTE Of [whose]"_s);
    EXPECT_TRUE(query.returnsRows());
    EXPECT_EQ(query.parameterCount(), 1);
    EXPECT_EQ(query.fieldCount(), 2) << "known without values";
    query.setParameter(0, Value::fromText(u"Ann"_s));
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Dynaset, query);
    EXPECT_EQ(set.recordCount(), 2);
    set.edit();
    set.setValue(1, Value::fromDouble(1));
    set.update();
    EXPECT_EQ(rows(u"EXECUTE Above 8"_s), u"who"_s);
}

TEST_F(EngineTest, ADefinitionOfACrossTableKnowsItsColumns)
{
    dao::QueryDef query(m_database, u"PARAMETERS [least] Currency; TRANSFORM Sum(amount) SELECT who FROM sales "
                                    "WHERE amount > [least] GROUP BY who PIVOT area"_s);
    EXPECT_EQ(query.fieldCount(), 1) << "only the row heads, before the parameter has a value";
    query.setParameter(0, Value::fromDouble(6));
    ASSERT_EQ(query.fieldCount(), 2);
    EXPECT_EQ(query.field(1).name, u"North"_s);
    EXPECT_EQ(query.field(1).type, dao::DataType::Currency);
    query.setParameter(0, Value::fromDouble(1));
    EXPECT_EQ(query.fieldCount(), 3);
    m_database.execute(u"DELETE FROM sales WHERE area = 'North'"_s);
    EXPECT_EQ(query.fieldCount(), 2);
}

TEST_F(EngineTest, TheFirstRowsOfATableCanBeChanged)
{
    m_database.createQuery({u"Best"_s, u"SELECT TOP 2 id, who, amount FROM sales ORDER BY amount DESC"_s});
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Dynaset, u"SELECT who, amount FROM Best WHERE amount < 9"_s);
    ASSERT_EQ(set.recordCount(), 1);
    ASSERT_TRUE(set.isUpdatable());
    set.edit();
    set.setValue(u"who"_s, Value::fromText(u"Cid"_s));
    set.update();
    EXPECT_EQ(rows(u"SELECT * FROM Best"_s), u"id|who|amount\n1|Ann|10\n3|Cid|7.25"_s);
    EXPECT_EQ(m_database.execute(u"UPDATE Best SET amount = amount + 1 WHERE who = 'Ann'"_s), 1);
    EXPECT_EQ(m_database.execute(u"DELETE FROM Best WHERE who = 'Cid'"_s), 1);
    EXPECT_EQ(rows(u"SELECT amount FROM sales"_s), u"amount\n11\n5"_s);
    EXPECT_EQ(
        rows(u"SELECT s.who, b.amount FROM sales AS s INNER JOIN (SELECT TOP 1 * FROM sales) AS b ON s.id > b.id"_s),
        u"who|amount\nAnn|11"_s);
    m_database.createQuery({u"Whole"_s, u"SELECT TOP 100 PERCENT * FROM sales ORDER BY amount"_s});
    EXPECT_EQ(rows(u"SELECT amount FROM Whole"_s), u"amount\n5\n11"_s);
    EXPECT_EQ(rows(u"SELECT who, Sum(amount) AS s FROM Best GROUP BY who"_s), u"who|s\nAnn|16"_s);
}

TEST_F(EngineTest, WholeNumbersGoOnBeyondTheirType)
{
    m_database.execute(u"CREATE TABLE n (x LONG)"_s);
    m_database.execute(u"INSERT INTO n VALUES (2147483647)"_s);
    m_database.execute(u"INSERT INTO n VALUES (2147483647)"_s);
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Dynaset, u"SELECT x + x AS a, x * x AS b, x * x * x AS c FROM n"_s);
    EXPECT_EQ(set.value(0), Value::fromDouble(4294967294.0));
    EXPECT_EQ(set.value(1), Value::fromDouble(4611686014132420609.0));
    EXPECT_GT(set.value(2).real(), 9.9e27);
    set.open(dao::Recordset::Type::Dynaset, u"SELECT Sum(x) AS a, Sum(x * x) AS b, Sum(x * x * 2) AS c FROM n"_s);
    EXPECT_EQ(set.value(0), Value::fromDouble(4294967294.0));
    EXPECT_EQ(set.value(1), Value::fromDouble(9223372028264841218.0)) << "nor is there an end at 64 bits";
    EXPECT_GT(set.value(2).real(), 1.8e19);
    EXPECT_EQ(rows(u"SELECT TOP 1 CLng(x + 1) AS a FROM n"_s), u"a\n#Num!"_s);
    try {
        m_database.execute(u"UPDATE n SET x = x + 1"_s);
        ADD_FAILURE();
    } catch (const dao::DaoException &exception) {
        EXPECT_EQ(exception.number(), 3349);
    }
}

TEST_F(EngineTest, ValuesOfAnOpenTypeAreShownAsThisEngineWritesThem)
{
    m_database.execute(u"CREATE TABLE d (id LONG, w DATETIME, s SINGLE)"_s);
    m_database.execute(u"INSERT INTO d VALUES (1, #1/2/2003#, 0.9)"_s);
    dao::QueryDef query(m_database, u"PARAMETERS y VALUE; SELECT y + 1 AS x"_s);
    query.setParameter(0, Value::fromDouble(5));
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Snapshot, query);
    EXPECT_EQ(set.value(0).text(), u"6"_s);
    EXPECT_EQ(rows(u"SELECT DMax('w', 'd', 'id <= ' & id) AS w, DLookup('w', 'd', 'id = ' & id) & '!' AS t, "
                   "DLookup('s', 'd', 'id = ' & id) AS s FROM d"_s),
              u"w|t|s\n1/2/2003|1/2/2003!|0.9"_s);
}

TEST_F(EngineTest, ATableMadeOfAQueryHasFieldsThatATableCanHave)
{
    m_database.execute(u"CREATE TABLE people (who TEXT(20) PRIMARY KEY, life MEMO)"_s);
    m_database.execute(u"INSERT INTO people VALUES ('Ann', '"_s + QString(400, u'x') + u"')"_s);
    m_database.execute(u"SELECT * INTO both FROM sales INNER JOIN people ON sales.who = people.who"_s);
    EXPECT_EQ(rows(u"SELECT id, sales_who, people_who FROM both WHERE amount > 5"_s),
              u"id|sales_who|people_who\n1|Ann|Ann"_s);
    m_database.execute(u"SELECT id, id AS again INTO twice FROM sales"_s);
    EXPECT_TRUE(m_database.table(u"twice").field(u"id")->isAutoIncrement());
    EXPECT_EQ(rows(u"SELECT * FROM twice WHERE again = 2"_s), u"id|again\n2|2"_s);
    m_database.execute(
        u"SELECT UCase(life) AS a, life & '!' AS b, life + who AS c, Left(life, 300) AS d INTO long FROM people"_s);
    EXPECT_EQ(rows(u"SELECT Len(a) AS e, Len(b) AS f, Len(c) AS g, Len(d) AS h FROM long"_s),
              u"e|f|g|h\n400|401|403|300"_s);
}

TEST_F(EngineTest, AnAlteredFieldKeepsWhatIsNotSaidAnew)
{
    m_database.execute(u"CREATE TABLE f (a TEXT(5) NOT NULL, b LONG)"_s);
    m_database.execute(u"ALTER TABLE f ALTER COLUMN a TEXT(9)"_s);
    EXPECT_TRUE(m_database.table(u"f").field(u"a")->required);
    EXPECT_EQ(m_database.table(u"f").field(u"a")->size, 9);
    m_database.execute(u"ALTER TABLE f ALTER COLUMN a TEXT(9) NULL"_s);
    EXPECT_FALSE(m_database.table(u"f").field(u"a")->required);
    m_database.execute(u"ALTER TABLE f ALTER COLUMN b SHORT NOT NULL"_s);
    EXPECT_TRUE(m_database.table(u"f").field(u"b")->required);
}

#include <dao/Database.h>
#include <dao/Recordset.h>
#include <dao/values/Errors.h>

#include <gtest/gtest.h>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using dao::Value;

// Statements through the whole engine, where the compiler and the recordset have to work hand in hand.

namespace {

class EngineTest : public testing::Test
{
protected:
    EngineTest()
    {
        m_database.create(m_folder.filePath(u"test.mdb"_s), u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
        m_database.execute(
            u"CREATE TABLE sales (id COUNTER PRIMARY KEY, who TEXT(20), area TEXT(20), amount CURRENCY)"_s);
        m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES ('Ann', 'North', 10)"_s);
        m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES ('Ann', 'South', 5)"_s);
        m_database.execute(u"INSERT INTO sales (who, area, amount) VALUES ('Bob', 'North', 7.25)"_s);
    }

    /// Names, then rows, by "|".
    QString rows(const QString &sql, dao::Recordset::Type type = dao::Recordset::Type::Dynaset)
    {
        dao::Recordset set(m_database);
        set.open(type, sql);
        QStringList lines;
        QStringList names;
        for (int i = 0; i < set.fieldCount(); ++i)
            names.append(set.field(i).name);
        lines.append(names.join(u'|'));
        for (; !set.isEof(); set.moveNext()) {
            QStringList cells;
            for (int i = 0; i < set.fieldCount(); ++i)
                cells.append(set.value(i).isNull() ? u"-"_s
                                                   : dao::convertValue(set.value(i), dao::DataType::Text).text());
            lines.append(cells.join(u'|'));
        }
        return lines.join(u'\n');
    }

    int errorOf(const QString &sql)
    {
        try {
            rows(sql);
        } catch (const dao::DaoException &exception) {
            return exception.number();
        }
        return 0;
    }

    QTemporaryDir m_folder;
    dao::Workspace m_workspace;
    dao::Database m_database{m_workspace};
};

} // namespace

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

TEST_F(EngineTest, ATextThatIsTooDeepForTheInnerEngineIsTooComplex)
{
    QString nested = u"1"_s;
    for (int i = 0; i < 45; ++i)
        nested = u"Abs(%1) + 1 - (2 * (1 + Abs(1)))"_s.arg(nested);
    EXPECT_EQ(errorOf(u"SELECT "_s + nested), 3360);
}

TEST_F(EngineTest, DomainFunctionsTakeTextsThatRowsMake)
{
    EXPECT_EQ(rows(u"SELECT id, DSum('amount', 'sales', \"who = '\" & who & \"'\") AS total FROM sales"_s),
              u"id|total\n1|15\n2|15\n3|7.25"_s);
    EXPECT_EQ(rows(u"SELECT DCount('*', 'sales') AS n, DLookup('who', 'sales', 'amount > 9') AS w"_s), u"n|w\n3|Ann"_s);
}

TEST_F(EngineTest, AStoredQueryRunsWithItsParametersInOrder)
{
    m_database.createQuery(
        {u"Raise"_s,
         u"PARAMETERS [much] Currency, [name] Text; UPDATE sales SET amount = amount + [much] WHERE who = [name]"_s});
    EXPECT_EQ(m_database.execute(u"EXECUTE Raise 2.5, 'Bob'"_s), 1);
    EXPECT_EQ(rows(u"SELECT amount FROM sales WHERE who = 'Bob'"_s), u"amount\n9.75"_s);
}

TEST_F(EngineTest, AJoinIsEditedThroughItsRows)
{
    m_database.execute(u"CREATE TABLE people (who TEXT(20) PRIMARY KEY, boss TEXT(20))"_s);
    m_database.execute(u"INSERT INTO people VALUES ('Ann', 'Zoe')"_s);
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Dynaset,
             u"SELECT sales.id, sales.amount, people.boss FROM sales INNER JOIN people ON sales.who = people.who"_s);
    ASSERT_TRUE(set.isUpdatable());
    set.edit();
    set.setValue(u"amount"_s, Value::fromDouble(11));
    set.setValue(u"boss"_s, Value::fromText(u"Max"_s));
    set.update();
    set.moveNext();
    EXPECT_EQ(set.value(u"boss"_s).text(), u"Max"_s) << "the one side is one row";
    set.deleteRow();
    EXPECT_EQ(rows(u"SELECT id, amount FROM sales"_s), u"id|amount\n1|11\n3|7.25"_s);
    EXPECT_EQ(rows(u"SELECT Count(*) AS n FROM people"_s), u"n\n1"_s);
}

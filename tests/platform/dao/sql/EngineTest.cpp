#include <dao/Database.h>
#include <dao/Recordset.h>
#include <dao/values/CellFailure.h>
#include <dao/values/Errors.h>

#include <gtest/gtest.h>
#include <limits>
#include <QTemporaryDir>
#include <sqlite3.h>

using namespace Qt::StringLiterals;
using dao::Value;

// Statements that need compiler and recordset together.

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
                cells.append(set.value(i).isNull()    ? u"-"_s
                             : set.value(i).isError() ? dao::failureWord(int(set.value(i).integer()))
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
    // Headings that depend on a parameter without a value are unknown.
    m_database.createQuery({u"Above"_s, u"PARAMETERS [least] Currency; TRANSFORM Sum(amount) SELECT who FROM sales "
                                        "WHERE amount > [least] GROUP BY who PIVOT area"_s});
    EXPECT_EQ(errorOf(u"SELECT * FROM Above"_s), 3143);
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

TEST_F(EngineTest, ACellThatFailsLeavesTheOtherRows)
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

TEST_F(EngineTest, FailuresOfARunHaveThePlaceOfTheirExpression)
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

TEST_F(EngineTest, HintsNameWhatTheTextCanName)
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

TEST_F(EngineTest, LargeAmountsKeepTheirDigits)
{
    EXPECT_EQ(rows(u"SELECT CCur('922337203685477.5807') AS a, CCur('-922337203685477.5808') AS b"_s),
              u"a|b\n922337203685477.5807|-922337203685477.5808"_s);
    EXPECT_EQ(rows(u"SELECT CCur('123456789012.3456') AS a, CCur(0.00005) AS b, CCur(-2.50015) AS c"_s),
              u"a|b|c\n123456789012.3456|0|-2.5002"_s);
}

TEST_F(EngineTest, TheFileDefendsRangesWhoeverWrites)
{
    m_database.execute(u"CREATE TABLE r (s SINGLE, d DOUBLE, c CURRENCY, w DATETIME, t TEXT(3))"_s);
    m_database.close();
    sqlite3 *file = nullptr;
    ASSERT_EQ(sqlite3_open(m_folder.filePath(u"test.mdb"_s).toUtf8().constData(), &file), SQLITE_OK);
    const std::pair<const char *, bool> rows[] = {
        {"3.4028234663852886e38, -1.7976931348623157e308, 922337203685477.5807, 2958465.99, 'abc'", true},
        {"-1.5, 1e-300, -922337203685477.5808, -657434.5, NULL", true},
        {"3.5e38, 0, 0, 0, 'a'", false},
        {"1, -9e999, 0, 0, 'a'", false},
        {"1, 0, 1e15, 0, 'a'", false},
        {"1, 0, 0, 2958466, 'a'", false},
        {"1, 0, 0, -700000, 'a'", false},
        {"1, 0, 0, 0, 'a' || char(0) || 'bc'", false},
    };
    for (const auto &[values, taken] : rows) {
        const QByteArray sql = QByteArray("INSERT INTO r VALUES (") + values + ')';
        EXPECT_EQ(sqlite3_exec(file, sql, nullptr, nullptr, nullptr) == SQLITE_OK, taken) << values;
    }
    sqlite3_close(file);
    m_database.open(m_folder.filePath(u"test.mdb"_s));
    dao::Recordset set(m_database);
    set.open(dao::Recordset::Type::Snapshot, u"SELECT c FROM r ORDER BY c DESC"_s);
    EXPECT_EQ(set.value(0).integer(), std::numeric_limits<qint64>::max());
    set.moveNext();
    EXPECT_EQ(set.value(0).integer(), std::numeric_limits<qint64>::min());
}

TEST_F(EngineTest, AGroupedQueryShowsNoFieldOutsideItsKeysThroughASubquery)
{
    m_database.execute(u"CREATE TABLE bosses (who TEXT(20), area TEXT(20))"_s);
    m_database.execute(u"INSERT INTO bosses VALUES ('Zoe', 'North')"_s);
    const QString sql = u"SELECT %1 AS k, (SELECT Max(b.who) FROM bosses AS b WHERE b.area = sales.area) AS boss "
                        "FROM sales GROUP BY %1 ORDER BY %1"_s;
    EXPECT_EQ(errorOf(sql.arg(u"who"_s)), 3122);
    EXPECT_EQ(rows(sql.arg(u"area"_s)), u"k|boss\nNorth|Zoe\nSouth|-"_s);
    EXPECT_EQ(
        errorOf(u"SELECT area FROM sales GROUP BY area HAVING Exists (SELECT * FROM bosses WHERE who = sales.who)"_s),
        3122);
    EXPECT_EQ(errorOf(u"SELECT area, (SELECT Sum(amount) FROM bosses) AS s FROM sales GROUP BY area"_s), 3122);
}

TEST_F(EngineTest, ATextThatIsTooDeepForTheInnerEngineIsTooComplex)
{
    QString nested = u"1"_s;
    for (int i = 0; i < 45; ++i)
        nested = u"Abs(%1) + 1 - (2 * (1 + Abs(1)))"_s.arg(nested);
    EXPECT_EQ(errorOf(u"SELECT "_s + nested), 3360);
    // SQLite cannot plan that many conditions on fields without an index, and need not.
    EXPECT_EQ(errorOf(u"SELECT id FROM sales WHERE amount=1"_s + u" AND amount=1"_s.repeated(40'000)), 0);
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

TEST_F(EngineTest, WhatIsComputedKeepsToTheLimitsOfItsType)
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

TEST_F(EngineTest, RelationsWithoutANameAreNumbered)
{
    m_database.execute(u"CREATE TABLE ends (a LONG REFERENCES sales (id), b LONG REFERENCES sales (id))"_s);
    m_database.execute(u"ALTER TABLE ends ADD COLUMN c LONG REFERENCES sales (id)"_s);
    m_database.execute(u"INSERT INTO ends VALUES (1, 2, 3)"_s);
    for (const QString &field : {u"a"_s, u"b"_s, u"c"_s})
        EXPECT_ANY_THROW(m_database.execute(u"UPDATE ends SET "_s + field + u" = 9"_s)) << qPrintable(field);
}

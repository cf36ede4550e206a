#include "Fixture.h"

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::table;

class ConstraintsTest : public StoreTest
{
protected:
    ConstraintsTest()
    {
        database.createTable(
            table(u"t"_s,
                  {field(u"id"_s, DataType::Long, 0, "RA"), field(u"site"_s, DataType::Text, 5, "R"),
                   field(u"kind"_s, DataType::Text, 50), field(u"note"_s, DataType::Memo, 0, "Z"),
                   field(u"pcnt"_s, DataType::Integer, 0, "", u">= 0 and <= 100"_s),
                   field(u"leg"_s, DataType::Integer, 0, "R", {}, u"1"_s), field(u"volts"_s, DataType::Single),
                   field(u"price"_s, DataType::Currency), field(u"size"_s, DataType::Byte),
                   field(u"done"_s, DataType::Boolean, 0, "R"), field(u"perm"_s, DataType::Boolean, 0, "", {}, u"1"_s),
                   field(u"time"_s, DataType::Date), field(u"big"_s, DataType::Long),
                   field(u"exact"_s, DataType::Double), field(u"bits"_s, DataType::LongBinary)},
                  {index(u"id"_s, {u"id"_s}, true), index(u"kinds"_s, {u"kind"_s, u"pcnt"_s}, false, true)}));
    }
    QString appendError(const QString &name, const Value &value)
    {
        return errorOf([&] { append(u"t"_s, {{u"site"_s, text(u"S"_s)}, {name, value}}); });
    }
    QString stored(const QString &name) { return rawRows(u"SELECT %1 FROM t ORDER BY id DESC LIMIT 1"_s.arg(name)); }
};

TEST_F(ConstraintsTest, EachRefusalHasTheEnginesNumberAndText)
{
    EXPECT_EQ(errorOf([&] {
                  append(u"t"_s, {{u"kind"_s, text(u"a"_s)}});
              }),
              u"3314 DAO.Recordset: The field 't.site' cannot contain a Null value because the Required property for "
              u"this field is "
              "set to True.  Enter a value in this field."_s);
    EXPECT_EQ(appendError(u"kind"_s, text(u""_s)),
              u"3315 DAO.Recordset: Field 't.kind' cannot be a zero-length string."_s);
    EXPECT_EQ(appendError(u"pcnt"_s, number(101)), u"3317 DAO.Recordset: One or more values are prohibited by the "
                                                   u"validation rule '>= 0 and <= 100' set for 't.pcnt'.  "
                                                   "Enter a value that the expression for this field can accept."_s);
    EXPECT_EQ(
        appendError(u"site"_s, text(u"123456"_s)),
        u"3163 DAO.Field: The field is too small to accept the amount of data you attempted to add.  Try inserting or "
        "pasting less data."_s);
    EXPECT_EQ(appendError(u"pcnt"_s, number(40000)), u"3421 DAO.Field: Data type conversion error."_s);
    EXPECT_EQ(appendError(u"time"_s, text(u"no date"_s)), u"3421 DAO.Field: Data type conversion error."_s);
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM t"_s), u"0"_s);
}

TEST_F(ConstraintsTest, ARuleAdmitsNullAndTheEndsOfItsRange)
{
    for (const Value &value : {Value::null(), number(0), number(100)})
        EXPECT_EQ(appendError(u"pcnt"_s, value), QString());
    EXPECT_EQ(rawRows(u"SELECT pcnt FROM t"_s), u"- 0 100"_s);
}

TEST_F(ConstraintsTest, AValidationTextReplacesTheRule)
{
    FieldInfo info = field(u"sec"_s, DataType::Integer, 0, "", u"<= 9"_s);
    info.validationText = u"Sections are 0 to 9."_s;
    database.createTable(table(u"v"_s, {info}));
    EXPECT_EQ(errorOf([&] {
                  append(u"v"_s, {{u"sec"_s, number(10)}});
              }),
              u"3316 DAO.Recordset: Sections are 0 to 9."_s);
}

TEST_F(ConstraintsTest, ARuleThatNeedsTheEngineIsEnforcedByIt)
{
    database.createTable(table(u"v"_s, {field(u"day"_s, DataType::Date, 0, "", u"<= Date() + 1"_s)}));
    append(u"v"_s, {{u"day"_s, Value::fromDate(36526)}});
    append(u"v"_s, {{u"day"_s, Value::null()}});
    EXPECT_EQ(numberOf([&] { append(u"v"_s, {{u"day"_s, Value::fromDate(2000000)}}); }), 3317);
    EXPECT_EQ(raw(u"INSERT INTO v (day) VALUES (36527.5)"_s), QString()) << "other tools can still write";
    database.deleteTable(u"v");
}

TEST_F(ConstraintsTest, ARollBackDoesNotSwitchThoseRulesOff)
{
    const auto refused = [&] { return numberOf([&] { append(u"v"_s, {{u"day"_s, Value::fromDate(2000000)}}); }); };
    Workspace otherWorkspace;
    Database other(otherWorkspace);
    other.open(path());
    other.createTable(table(u"v"_s, {field(u"day"_s, DataType::Date, 0, "", u"<= Date() + 1"_s)}));
    workspace.beginTrans();
    EXPECT_EQ(refused(), 3317);
    workspace.rollback();
    EXPECT_EQ(refused(), 3317);
}

TEST_F(ConstraintsTest, ARuleOfTheTableSpansItsFields)
{
    TableInfo info = table(u"r"_s, {field(u"low"_s, DataType::Integer), field(u"high"_s, DataType::Integer)});
    info.validationRule = u"low <= high"_s;
    database.createTable(info);
    append(u"r"_s, {{u"low"_s, number(1)}, {u"high"_s, number(1)}});
    EXPECT_EQ(errorOf([&] {
                  append(u"r"_s, {{u"low"_s, number(2)}, {u"high"_s, number(1)}});
              }),
              u"3317 DAO.Recordset: One or more values are prohibited by the validation rule 'low <= high' set for "
              u"'r'.  Enter a "
              "value that the expression for this field can accept."_s);
    EXPECT_NE(raw(u"UPDATE r SET low = 5"_s), QString());
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE r ADD CONSTRAINT c CHECK (high > 1)"_s); }), 3317);
    database.execute(u"ALTER TABLE r ADD CONSTRAINT c CHECK (high < 10)"_s);
    EXPECT_NE(raw(u"UPDATE r SET high = 10"_s), QString());
    EXPECT_NE(raw(u"UPDATE r SET low = 5"_s), QString());
}

TEST_F(ConstraintsTest, TheSizeOfATextCountsAllOfIt)
{
    database.execute(u"CREATE TABLE s (n LONG, a TEXT(5), m MEMO)"_s);
    database.execute(u"INSERT INTO s (n, m) VALUES (1, 'ab' & Chr(0) & 'cdefghijkl')"_s);
    const auto number = [this](const QString &sql) { return numberOf([&] { database.execute(sql); }); };
    EXPECT_EQ(number(u"INSERT INTO s (n, a) VALUES (2, 'ab' & Chr(0) & 'cdefghijkl')"_s), 3163);
    EXPECT_EQ(number(u"INSERT INTO s (n, a) SELECT 2, m FROM s"_s), 3163);
    EXPECT_EQ(number(u"INSERT INTO s (n, a) SELECT DISTINCT 2, m FROM s"_s), 3163);
    EXPECT_EQ(number(u"UPDATE s SET a = m"_s), 3163);
    EXPECT_EQ(number(u"UPDATE s SET a = '\U0001F600\U0001F600\U0001F600'"_s), 3163) << "six units of UTF-16";
    EXPECT_EQ(number(u"UPDATE s SET a = 'abcdef'"_s), 3163);
    EXPECT_EQ(number(u"UPDATE s SET a = 'abc' & 'def'"_s), 3163);
    EXPECT_EQ(number(u"UPDATE s SET a = 'a' & Chr(0) & 'cde'"_s), 0);
    EXPECT_EQ(number(u"UPDATE s SET a = '\U0001F600' & '\U0001F600' & n"_s), 0);
    EXPECT_EQ(rows(u"SELECT a, Len(a) FROM s"_s), u"\U0001F600\U0001F6001|5"_s);
}

TEST_F(ConstraintsTest, AConditionOfTheTableIsDroppedByItsName)
{
    const auto tryRow = [&](int a, int b) {
        return numberOf([&] { database.execute(u"INSERT INTO c (a, b) VALUES (%1, %2)"_s.arg(a).arg(b)); });
    };
    database.execute(u"CREATE TABLE c (a LONG CONSTRAINT least CHECK (a > 0), b LONG, CONSTRAINT most CHECK (b < 10), "
                     "CONSTRAINT [in order] CHECK (a <= b Or (b Is Null)))"_s);
    EXPECT_EQ(tryRow(0, 5), 3317);
    EXPECT_EQ(tryRow(1, 10), 3317);
    EXPECT_EQ(tryRow(6, 5), 3317);
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE c ADD CONSTRAINT least CHECK (a > 1)"_s); }), 3375);
    try {
        database.execute(u"ALTER TABLE c DROP COLUMN b"_s);
        ADD_FAILURE() << "a condition names the field";
    } catch (const DaoException &exception) {
        EXPECT_EQ(exception.number(), 3070);
        EXPECT_FALSE(exception.where().isValid()) << "no place in this statement";
        EXPECT_TRUE(exception.hint().contains(u"b < 10"_s));
    }
    database.execute(u"ALTER TABLE c DROP CONSTRAINT MOST"_s);
    EXPECT_EQ(tryRow(1, 10), 0);
    EXPECT_EQ(tryRow(0, 5), 3317);
    database.execute(u"ALTER TABLE c DROP CONSTRAINT least"_s);
    EXPECT_EQ(tryRow(0, 5), 0);
    EXPECT_EQ(tryRow(6, 5), 3317);
    database.execute(u"ALTER TABLE c ADD COLUMN d LONG CONSTRAINT [not both] CHECK (d Is Null Or a Is Null)"_s);
    EXPECT_EQ(numberOf([&] { database.execute(u"INSERT INTO c (a, d) VALUES (1, 1)"_s); }), 3317);
    database.execute(u"ALTER TABLE c DROP CONSTRAINT [in order]"_s);
    database.execute(u"ALTER TABLE c DROP CONSTRAINT [not both]"_s);
    EXPECT_EQ(tryRow(6, 5), 0);
    EXPECT_EQ(database.table(u"c").validationRule, QString());
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE c DROP CONSTRAINT least"_s); }), 3371);
    database.execute(u"DROP TABLE c"_s);
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM _dao_properties WHERE name LIKE 'Check:%'"_s), u"0"_s);
}

TEST_F(ConstraintsTest, ARuleOfTheTableMayNeedTheEngine)
{
    TableInfo info = table(
        u"r"_s, {field(u"a"_s, DataType::Text, 10), field(u"b"_s, DataType::Text, 10), field(u"c"_s, DataType::Date)});
    info.validationRule = u"StrComp(a, b) <= 0 And (c Is Null Or c < Date() + 1)"_s;
    database.createTable(info);
    const auto add = [&](const QString &a, const QString &b) {
        return numberOf([&] { append(u"r"_s, {{u"a"_s, text(a)}, {u"b"_s, text(b)}}); });
    };
    EXPECT_EQ(add(u"x"_s, u"y"_s), 0);
    EXPECT_EQ(add(u"y"_s, u"x"_s), 3317);
    EXPECT_EQ(numberOf([&] { append(u"r"_s, {{u"b"_s, text(u"y"_s)}}); }), 0) << "Null passes";
    EXPECT_EQ(numberOf([&] { database.execute(u"UPDATE r SET a = 'z'"_s); }), 3317);
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE r ADD CONSTRAINT n CHECK (Len(a & b) > 1)"_s); }), 3317)
        << "rows that are there count as well";
    database.execute(u"ALTER TABLE r ADD CONSTRAINT n CHECK (Len(a & b) > 0)"_s);
    EXPECT_EQ(raw(u"INSERT INTO r (a, b) VALUES ('y', 'x')"_s), QString()) << "other tools can still write";
    TableInfo broken = info;
    broken.name = u"broken"_s;
    broken.validationRule = u"StrComp(a, nothing) < 0"_s;
    EXPECT_EQ(numberOf([&] { database.createTable(broken); }), 3070);
}

TEST_F(ConstraintsTest, RowsThatBreakAnOldRuleOfTheTableDoNotStopOtherChanges)
{
    TableInfo info = table(u"r"_s, {field(u"a"_s, DataType::Long), field(u"b"_s, DataType::Long)});
    info.validationRule = u"a < b"_s;
    database.createTable(info);
    raw(u"PRAGMA ignore_check_constraints = ON; INSERT INTO r (a, b) VALUES (5, 1)"_s);
    database.execute(u"ALTER TABLE r ADD COLUMN c LONG NOT NULL DEFAULT 3"_s);
    database.execute(u"CREATE UNIQUE INDEX pk ON r (a) WITH PRIMARY"_s);
    EXPECT_EQ(rawRows(u"SELECT a, b, c FROM r"_s), u"5|1|3"_s);
    EXPECT_EQ(numberOf([&] { database.execute(u"UPDATE r SET b = 2"_s); }), 3317);
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE r ALTER COLUMN a DOUBLE"_s); }), 3317);
}

TEST_F(ConstraintsTest, ARefusalSaysWhichFieldOrIndexItIsAbout)
{
    const auto hintOf = [&](const std::function<void()> &action) {
        try {
            action();
        } catch (const DaoException &exception) {
            return exception.hint();
        }
        return QString();
    };
    const auto insert = [&](const QString &name, const Value &value) {
        return hintOf([&] { append(u"t"_s, {{u"site"_s, text(u"S"_s)}, {name, value}}); });
    };
    EXPECT_EQ(insert(u"site"_s, text(u"123456"_s)), u"Field 't.site' holds 5 characters."_s);
    EXPECT_EQ(insert(u"pcnt"_s, text(u"many"_s)), u"It is field 't.pcnt'."_s);
    EXPECT_EQ(hintOf([&] { database.execute(u"INSERT INTO t (site) VALUES ('123456')"_s); }),
              u"Field 't.site' holds 5 characters."_s);
    append(u"t"_s, {{u"site"_s, text(u"S"_s)}, {u"kind"_s, text(u"k"_s)}, {u"pcnt"_s, number(1)}});
    EXPECT_EQ(hintOf([&] { database.execute(u"INSERT INTO t (site, kind, pcnt) VALUES ('S', 'K', 1)"_s); }),
              u"It is index 'kinds' of table 't'."_s);
    EXPECT_EQ(insert(u"id"_s, number(1)), u"It is index 'id' of table 't'."_s);
    // Definitions that the rows do not fit.
    append(u"t"_s, {{u"site"_s, text(u"S"_s)}, {u"kind"_s, text(u"K"_s)}, {u"pcnt"_s, number(2)}});
    EXPECT_EQ(hintOf([&] { database.execute(u"CREATE UNIQUE INDEX two ON t (site, kind)"_s); }),
              u"Rows of table 't' are the same in 'site', 'kind'."_s);
    EXPECT_EQ(hintOf([&] { database.execute(u"ALTER TABLE t ALTER COLUMN site LONG"_s); }), u"It is field 't.site'."_s);
}

TEST_F(ConstraintsTest, UniqueIndexesCompareWithoutCaseAndAdmitNulls)
{
    const QString duplicate =
        u"3022 DAO.Recordset: The changes you requested to the table were not successful because they "
        "would create duplicate values in the index, primary key, or relationship.  Change the data in the "
        "field or fields that contain duplicate data, remove the index, or redefine the index to permit "
        "duplicate entries and try again."_s;
    const auto add = [&](const Value &kind, const Value &pcnt) {
        return errorOf([&] { append(u"t"_s, {{u"site"_s, text(u"S"_s)}, {u"kind"_s, kind}, {u"pcnt"_s, pcnt}}); });
    };
    EXPECT_EQ(add(text(u"Ab"_s), number(1)), QString());
    EXPECT_EQ(add(text(u"aB"_s), number(1)), duplicate);
    EXPECT_EQ(add(text(u"ab"_s), Value::null()), QString());
    EXPECT_EQ(add(text(u"ab"_s), Value::null()), QString());
    EXPECT_EQ(appendError(u"id"_s, number(1)), duplicate);
}

TEST_F(ConstraintsTest, ValuesAreStoredByTheTypeOfTheField)
{
    const auto check = [&](const QString &name, const Value &value, const QString &expected) {
        ASSERT_EQ(appendError(name, value), QString()) << name.toStdString();
        EXPECT_EQ(stored(u"typeof(%1) || ' ' || quote(%1)"_s.arg(name)), expected) << name.toStdString();
    };
    check(u"volts"_s, Value::fromDouble(0.9), u"real 8.99999976158142089843e-01"_s);
    check(u"price"_s, Value::fromDouble(1.23456), u"real 1.2346"_s);
    check(u"pcnt"_s, text(u" 42 "_s), u"integer 42"_s);
    check(u"leg"_s, Value::fromDouble(2.5), u"integer 2"_s);
    check(u"done"_s, number(5), u"integer -1"_s);
    check(u"perm"_s, Value::null(), u"integer 0"_s);
    check(u"time"_s, text(u"2003-01-02 12:00"_s), u"real 37623.5"_s);
    check(u"kind"_s, number(12), u"text '12'"_s);
    check(u"bits"_s, Value::fromBinary(QByteArray("\0\1", 2)), u"blob X'0001'"_s);
    check(u"note"_s, text(u""_s), u"text ''"_s);
}

TEST_F(ConstraintsTest, OmittedFieldsGetTheirDefaults)
{
    append(u"t"_s, {{u"site"_s, text(u"S"_s)}});
    EXPECT_EQ(rawRows(u"SELECT id, leg, done, perm, pcnt, note FROM t"_s), u"1|1|0|-1|-|-"_s);
    EXPECT_EQ(numberOf([&] {
                  append(u"t"_s, {{u"site"_s, text(u"S"_s)}, {u"leg"_s, Value::null()}});
              }),
              3314)
        << "a Null that is given is not replaced";
}

TEST_F(ConstraintsTest, ADefaultThatIsComputedIsComputedForEachRow)
{
    database.createTable(
        table(u"d"_s, {field(u"day"_s, DataType::Date, 0, "R", {}, u"=Date()"_s), field(u"x"_s, DataType::Long)}));
    append(u"d"_s, {{u"x"_s, number(1)}});
    database.execute(u"INSERT INTO d (x) VALUES (2)"_s);
    EXPECT_EQ(rows(u"SELECT x FROM d WHERE day = Date()"_s), u"1 2"_s);
}

TEST_F(ConstraintsTest, AutonumbersAreNotUsedAgainAndFollowGivenOnes)
{
    append(u"t"_s, {{u"site"_s, text(u"a"_s)}});
    append(u"t"_s, {{u"site"_s, text(u"b"_s)}, {u"id"_s, number(10)}});
    raw(u"DELETE FROM t WHERE id = 10"_s);
    append(u"t"_s, {{u"site"_s, text(u"c"_s)}});
    EXPECT_EQ(rawRows(u"SELECT id, site FROM t"_s), u"1|a 11|c"_s);
}

TEST_F(ConstraintsTest, TheFileDefendsItselfAgainstOtherTools)
{
    const auto refused = [&](const QString &name, const QString &value) {
        return !raw(u"INSERT INTO t (site, %1) VALUES ('S', %2)"_s.arg(name, value)).isEmpty();
    };
    EXPECT_FALSE(refused(u"pcnt"_s, u"100"_s));
    EXPECT_TRUE(refused(u"pcnt"_s, u"101"_s));
    EXPECT_TRUE(refused(u"pcnt"_s, u"'abc'"_s));
    EXPECT_TRUE(refused(u"pcnt"_s, u"1.5"_s));
    EXPECT_TRUE(refused(u"leg"_s, u"40000"_s));
    EXPECT_TRUE(refused(u"leg"_s, u"NULL"_s));
    EXPECT_TRUE(refused(u"big"_s, u"2147483648"_s));
    EXPECT_TRUE(refused(u"size"_s, u"256"_s));
    EXPECT_TRUE(refused(u"done"_s, u"1"_s));
    EXPECT_TRUE(refused(u"done"_s, u"NULL"_s));
    EXPECT_TRUE(refused(u"volts"_s, u"'x'"_s));
    EXPECT_TRUE(refused(u"time"_s, u"'2003-01-02'"_s));
    // The ends of the ranges of numbers and dates.
    for (const auto &[name, value, isRefused] : {std::tuple{u"volts"_s, u"3.4028234663852886e38"_s, false},
                                                 {u"volts"_s, u"3.5e38"_s, true},
                                                 {u"exact"_s, u"-1.7976931348623157e308"_s, false},
                                                 {u"exact"_s, u"-9e999"_s, true},
                                                 {u"price"_s, u"922337203685477.5807"_s, false},
                                                 {u"price"_s, u"1e15"_s, true},
                                                 {u"time"_s, u"2958465.99"_s, false},
                                                 {u"time"_s, u"2958466"_s, true},
                                                 {u"time"_s, u"-657434.5"_s, false},
                                                 {u"time"_s, u"-700000"_s, true}})
        EXPECT_EQ(refused(name, value), isRefused) << qPrintable(name + u' ' + value);
    EXPECT_EQ(rows(u"SELECT price FROM t WHERE price > 1"_s), u"922337203685477.5807"_s);
    EXPECT_TRUE(refused(u"kind"_s, u"'%1' || char(0) || 'x'"_s.arg(QString(50, u'x')))) << "NUL does not end it";
    EXPECT_TRUE(refused(u"kind"_s, u"''"_s));
    EXPECT_TRUE(refused(u"kind"_s, u"x'00'"_s));
    EXPECT_TRUE(refused(u"kind"_s, u"'%1'"_s.arg(QString(51, u'x'))));
    EXPECT_FALSE(refused(u"kind"_s, u"'%1'"_s.arg(QString(50, u'é'))));
    EXPECT_TRUE(refused(u"bits"_s, u"'text'"_s));
    EXPECT_FALSE(raw(u"INSERT INTO t (kind) VALUES ('x')"_s).isEmpty());
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
}

#include "Fixture.h"

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;

/// Adds and removes fields and indexes of tables with rows.
class AlterTest : public StoreTest
{
protected:
    AlterTest()
    {
        database.execute(
            u"CREATE TABLE marks (id COUNTER CONSTRAINT [number] PRIMARY KEY, name TEXT(20) NOT NULL, old TEXT(20))"_s);
        database.execute(u"CREATE INDEX by_name ON marks (name)"_s);
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
            append(u"marks"_s, {{u"name"_s, text(name)}, {u"old"_s, text(name + name)}});
        raw(u"DELETE FROM marks WHERE name = 'c'"_s);
    }
    QString marks(const QString &fields) { return rawRows(u"SELECT %1 FROM marks ORDER BY id"_s.arg(fields)); }
    void expectSound() { EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s); }
};

TEST_F(AlterTest, RowsGetTheDefaultOfARequiredField)
{
    database.addField(u"marks", field(u"land_set"_s, DataType::Long, 0, "R", u">= 0"_s, u"7"_s));
    database.addField(u"marks", field(u"util"_s, DataType::Text, 50));
    database.addField(u"marks", field(u"flag"_s, DataType::Boolean));
    database.addField(u"marks", field(u"opt"_s, DataType::Long, 0, "", {}, u"5"_s));
    EXPECT_EQ(marks(u"id, name, land_set, util, flag, opt"_s), u"1|a|7|-|0|- 2|b|7|-|0|-"_s);
    append(u"marks"_s, {{u"name"_s, text(u"d"_s)}});
    EXPECT_EQ(marks(u"id, land_set, flag, opt"_s), u"1|7|0|- 2|7|0|- 4|7|0|5"_s) << "the autonumber goes on";
    EXPECT_EQ(numberOf([&] { append(u"marks"_s, {{u"name"_s, text(u"e"_s)}, {u"land_set"_s, number(-1)}}); }), 3317);
    EXPECT_EQ(database.table(u"marks").field(u"opt")->ordinal, 6);
    expectSound();
}

TEST_F(AlterTest, FieldsAreAddedUnderNamesOfValues)
{
    database.execute(u"ALTER TABLE marks ADD COLUMN [true] LONG"_s);
    database.execute(u"ALTER TABLE marks ADD COLUMN [False] YESNO"_s);
    database.execute(u"UPDATE marks SET [true] = id + 10, [false] = True WHERE [true] Is Null AND id = 2"_s);
    EXPECT_EQ(marks(u"id, name, marks.\"true\", marks.\"False\""_s), u"1|a|-|0 2|b|12|-1"_s);
    expectSound();
}

TEST_F(AlterTest, ARequiredFieldWithoutAValueWaitsForOne)
{
    database.addField(u"marks", field(u"plan"_s, DataType::Text, 50, "R"));
    EXPECT_EQ(marks(u"id, plan"_s), u"1|- 2|-"_s) << "rows that were there stay";
    EXPECT_EQ(errorOf([&] {
                  append(u"marks"_s, {{u"name"_s, text(u"d"_s)}});
              }),
              u"3314 DAO.Recordset: The field 'marks.plan' cannot contain a Null value because the Required property "
              u"for this "
              "field is set to True.  Enter a value in this field."_s);
    EXPECT_NE(raw(u"UPDATE marks SET name = 'x' WHERE id = 1"_s), QString());
    EXPECT_EQ(raw(u"UPDATE marks SET plan = 'p' || id"_s), QString());
    // If every row has a value, the next change of the table makes the field NOT NULL.
    database.createIndex(u"marks", index(u"plans"_s, {u"plan"_s, u"id"_s}, false, true));
    database.deleteField(u"marks", u"old");
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM sqlite_schema WHERE type = 'trigger'"_s), u"0"_s);
    EXPECT_EQ(numberOf([&] { append(u"marks"_s, {{u"name"_s, text(u"d"_s)}}); }), 3314);
    expectSound();
}

TEST_F(AlterTest, AFieldGoesAndTheRestStays)
{
    database.seedStatistics(u"marks"_s, 1000, {{u"by_name"_s, {10}}});
    database.deleteField(u"marks", u"old");
    EXPECT_EQ(database.table(u"marks").fields.size(), 2);
    EXPECT_EQ(marks(u"*"_s), u"1|a 2|b"_s);
    EXPECT_EQ(rawRows(u"SELECT stat FROM sqlite_stat1"_s), u"1000 10"_s);
    append(u"marks"_s, {{u"name"_s, text(u"d"_s)}});
    EXPECT_EQ(marks(u"*"_s), u"1|a 2|b 4|d"_s);
    expectSound();
}

TEST_F(AlterTest, APrimaryKeyNeedsValuesAndTakesThemFromThenOn)
{
    database.deleteIndex(u"marks", u"number");
    append(u"marks"_s, {{u"name"_s, text(u"d"_s)}});
    EXPECT_EQ(numberOf([&] { database.createIndex(u"marks", index(u"pk"_s, {u"name"_s, u"old"_s}, true)); }), 3058);
    EXPECT_EQ(database.table(u"marks").indexes.size(), 1) << "nothing is left of an index that failed";
    raw(u"UPDATE marks SET old = 'x' WHERE old IS NULL"_s);
    database.createIndex(u"marks", index(u"pk"_s, {u"name"_s, u"old"_s}, true));
    EXPECT_EQ(errorOf([&] {
                  append(u"marks"_s, {{u"name"_s, text(u"e"_s)}});
              }),
              u"3058 DAO.Recordset: Index or primary key cannot contain a Null value."_s);
    database.deleteIndex(u"marks", u"pk");
    append(u"marks"_s, {{u"name"_s, text(u"e"_s)}});
    expectSound();
}

#include "Fixture.h"

#include <dao/TableLoad.h>

#include <QDir>
#include <QFile>
#include <support/Files.h>

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::table;

/// Tables with a new definition or from another database; copies of the file.
class RebuildTest : public StoreTest
{
protected:
    RebuildTest()
    {
        database.execute(
            u"CREATE TABLE plans (site TEXT(50) NOT NULL, num SHORT, note TEXT(50), CONSTRAINT plan_id PRIMARY KEY (site, num))"_s);
        for (const int plan : {1, 2})
            append(u"plans"_s, {{u"site"_s, text(u"S"_s)}, {u"num"_s, number(plan)}, {u"note"_s, text(u"n"_s)}});
    }

    TableInfo renamedPlans(int size = 50) const
    {
        return table(u"plans"_s, {field(u"note"_s, DataType::Text, 50), field(u"name"_s, DataType::Text, size, "R")},
                     {index(u"name"_s, {u"name"_s}, true)});
    }
    QByteArray bytes(const QString &file) const { return support::readFile(path(file)); }
};

TEST_F(RebuildTest, FillsANewFieldFromTheOldRow)
{
    database.alterTable(u"plans", renamedPlans(), {{u"name"_s, u"[site] & '_' & [num]"_s}});
    EXPECT_EQ(rawRows(u"SELECT name, note FROM plans ORDER BY name"_s), u"S_1|n S_2|n"_s);
    EXPECT_EQ(database.table(u"plans").indexes.size(), 1);
    EXPECT_EQ(database.table(u"plans").field(u"name")->ordinal, 1);
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
    EXPECT_EQ(numberOf([&] { append(u"plans"_s, {{u"name"_s, text(u"s_1"_s)}}); }), 3022);
    EXPECT_EQ(numberOf([&] { append(u"plans"_s, {{u"note"_s, text(u"x"_s)}}); }), 3314);
}

TEST_F(RebuildTest, WhatCannotBeFilledChangesNothing)
{
    const auto alter = [&](const TableInfo &shape, const QString &expression) {
        return numberOf([&] { database.alterTable(u"plans", shape, {{u"name"_s, expression}}); });
    };
    EXPECT_EQ(alter(renamedPlans(2), u"[site] & '_' & [num]"_s), 3163) << "too long";
    EXPECT_EQ(alter(renamedPlans(), u"[site]"_s), 3022) << "not unique";
    EXPECT_EQ(alter(renamedPlans(), u"Null"_s), 3314);
    EXPECT_EQ(alter(renamedPlans(), u"[nothing]"_s), 3381);
    EXPECT_NE(alter(renamedPlans(), u"[site] &"_s), 0);
    EXPECT_EQ(numberOf([&] { database.alterTable(u"plans", renamedPlans(), {{u"other"_s, u"1"_s}}); }), 3381);
    EXPECT_EQ(rawRows(u"SELECT site, num, note FROM plans"_s), u"S|1|n S|2|n"_s);
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM sqlite_schema WHERE name LIKE '_dao_rebuild%'"_s), u"0"_s);
}

TEST_F(RebuildTest, RelationsStayAndWhatTheyNeed)
{
    database.execute(u"CREATE TABLE entries (site TEXT(50), num SHORT)"_s);
    RelationInfo both{u"rel"_s, u"plans"_s, u"entries"_s, 0x1100, {{u"site"_s, u"site"_s}, {u"num"_s, u"num"_s}}};
    database.createRelation(both);
    append(u"entries"_s, {{u"site"_s, text(u"S"_s)}, {u"num"_s, number(1)}});
    EXPECT_EQ(numberOf([&] { database.alterTable(u"plans", renamedPlans()); }), 3280);
    TableInfo shape = database.table(u"plans");
    shape.indexes.clear();
    EXPECT_EQ(numberOf([&] { database.alterTable(u"plans", shape); }), 3281) << "the key of a relation";
    shape = database.table(u"plans");
    shape.fields.removeLast();
    database.alterTable(u"plans", shape);
    EXPECT_EQ(raw(u"DELETE FROM plans WHERE num = 1"_s), QString());
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM entries"_s), u"0"_s) << "the cascade works";
}

TEST_F(RebuildTest, LoadedRowsStayAsTheyAreAndSurviveARebuild)
{
    workspace.beginTrans();
    TableLoad load(
        database,
        table(u"marks"_s,
              {field(u"id"_s, DataType::Long, 0, "A"), field(u"pcnt"_s, DataType::Integer, 0, "", u"<= 100"_s),
               field(u"who"_s, DataType::Text, 10, "R")},
              {index(u"key"_s, {u"id"_s}, true), index(u"who"_s, {u"who"_s})}),
        {u"who"_s});
    load.append({number(5), Value::fromShort(200), text(u"a"_s)});
    load.append({number(3), Value::fromShort(7), Value::null()});
    load.setLastAutoNumber(40);
    load.finish();
    EXPECT_EQ(load.rows(), 2);
    workspace.commitTrans();
    EXPECT_EQ(rawRows(u"SELECT id, pcnt, who FROM marks ORDER BY id"_s), u"3|7|- 5|200|a"_s);
    // A change of such a row must follow the rules, and so must a new row.
    EXPECT_NE(raw(u"UPDATE marks SET pcnt = 300 WHERE id = 5"_s), QString());
    EXPECT_NE(raw(u"INSERT INTO marks (pcnt) VALUES (1)"_s), QString());
    append(u"marks"_s, {{u"who"_s, text(u"b"_s)}});
    EXPECT_EQ(rawRows(u"SELECT max(id) FROM marks"_s), u"41"_s);
    TableInfo shape = database.table(u"marks");
    shape.fields.append(field(u"more"_s, DataType::Long));
    database.alterTable(u"marks", shape);
    EXPECT_EQ(rawRows(u"SELECT id, pcnt, who, more FROM marks ORDER BY id"_s), u"3|7|-|- 5|200|a|- 41|-|b|-"_s);
}

TEST_F(RebuildTest, LoadingTellsWhatIsInTheWay)
{
    const auto objectOf = [](const auto &action) -> QString {
        try {
            action();
        } catch (const LoadError &error) {
            return QString::number(error.number()) + u' ' + error.object();
        }
        return QString();
    };
    const TableInfo marks =
        table(u"marks"_s, {field(u"id"_s, DataType::Long, 0, "A"), field(u"who"_s, DataType::Text, 10, "R")},
              {index(u"unique"_s, {u"who"_s}, false, true)});
    workspace.beginTrans();
    TableLoad load(database, marks);
    load.append({number(1), text(u"a"_s)});
    EXPECT_EQ(objectOf([&] { load.append({number(2), Value::null()}); }), u"3314 who"_s);
    EXPECT_EQ(objectOf([&] { load.append({text(u"2"_s), text(u"b"_s)}); }), u"3421 id"_s);
    EXPECT_EQ(objectOf([&] { load.append({number(1), text(u"b"_s)}); }), u"3022 id"_s);
    load.append({number(2), text(u"A"_s)});
    EXPECT_EQ(objectOf([&] { load.finish(); }), u"3022 unique"_s);
    workspace.rollback();
    EXPECT_FALSE(database.hasTable(u"marks"));
}

TEST_F(RebuildTest, ReadsTheCommittedFileByteForByte)
{
    const auto content = [&] {
        QByteArray read;
        database.readFile([&](QByteArrayView piece) { read.append(piece); });
        return read;
    };
    const QByteArray before = bytes(u"test.mdb"_s);
    EXPECT_EQ(content(), before);

    // Changes of the open transaction are not included, and the file stays locked for others.
    workspace.beginTrans();
    append(u"plans"_s, {{u"site"_s, text(u"T"_s)}, {u"num"_s, number(1)}});
    EXPECT_EQ(content(), before);
    EXPECT_NE(raw(u"DELETE FROM plans"_s), QString());
    workspace.commitTrans();
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM plans"_s), u"3"_s);

    // With a write-ahead log its content is included.
    EXPECT_EQ(raw(u"PRAGMA journal_mode = WAL"_s), QString());
    database.changeStamp(); // so that it has the log open when the other closes it
    EXPECT_EQ(raw(u"DELETE FROM plans"_s), QString());
    EXPECT_FALSE(content() == bytes(u"test.mdb"_s));
    const QString copy = support::writeFile(path(u"copy.mdb"_s), content());
    EXPECT_EQ(raw(u"SELECT 1 FROM plans"_s, copy), QString());
}

TEST_F(RebuildTest, AWritingTransactionKeepsOthersFromChangingAndChangesNothing)
{
    const QByteArray before = bytes(u"test.mdb"_s);
    const qint64 stamp = database.changeStamp();
    workspace.beginTrans(Workspace::Begin::Writing);
    EXPECT_EQ(database.changeStamp(), stamp);
    EXPECT_NE(raw(u"DELETE FROM plans"_s), QString());
    workspace.commitTrans();
    EXPECT_EQ(bytes(u"test.mdb"_s), before);
    EXPECT_EQ(raw(u"DELETE FROM plans"_s), QString());
    EXPECT_NE(database.changeStamp(), stamp);
}

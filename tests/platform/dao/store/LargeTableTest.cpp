#include "Fixture.h"

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::relation;

/// Changes of a large table that fail half-way, inside a transaction with earlier changes.
class LargeTableTest : public StoreTest
{
protected:
    static constexpr int rowCount = 200'000;

    LargeTableTest()
    {
        database.execute(u"CREATE TABLE big (id COUNTER CONSTRAINT pk PRIMARY KEY, x LONG, name TEXT(30), old LONG)"_s);
        database.execute(u"CREATE INDEX x ON big (x)"_s);
        database.execute(u"CREATE TABLE keys (k LONG CONSTRAINT pk PRIMARY KEY)"_s);
        raw(u"INSERT INTO big (x, name) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
            "SELECT i, 'row ' || i FROM n"_s.arg(rowCount));
        raw(u"INSERT INTO keys (k) SELECT x FROM big"_s);
        before = content();
    }
    QString content()
    {
        QStringList names;
        for (const FieldInfo &each : database.table(u"big").fields)
            names.append(each.name);
        for (const IndexInfo &each : database.table(u"big").indexes)
            names.append(each.name);
        return rows(u"SELECT Count(*) AS n, Sum(x) AS s, Sum(id) AS i, Sum(Len(name)) AS l FROM big"_s) + u' ' +
               names.join(u',') + QString::number(database.relations().size());
    }
    void expectSound() { EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s); }

    QString before;
};

TEST_F(LargeTableTest, ARowThatCannotBeFilledLeavesTheTransactionAsItWas)
{
    workspace.beginTrans();
    database.execute(u"INSERT INTO keys (k) VALUES (-1)"_s);
    TableInfo shape = database.table(u"big");
    shape.fields.append(field(u"share"_s, DataType::Double));
    const auto alter = [&](const QString &fill) {
        return errorOf([&] { database.alterTable(u"big", shape, {{u"share"_s, fill}}); });
    };
    EXPECT_EQ(alter(u"1 / (x - %1)"_s.arg(rowCount - 5)).left(3), u"11 "_s);
    EXPECT_EQ(alter(u"IIf(x > %1, 'text', x)"_s.arg(rowCount - 5)).left(4), u"3464"_s);
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE big ALTER COLUMN x BYTE"_s); }), 3421);
    EXPECT_EQ(numberOf([&] { database.execute(u"ALTER TABLE big ADD CONSTRAINT c CHECK (x < %1)"_s.arg(rowCount)); }),
              3317);
    database.execute(u"UPDATE big SET name = 'row 7' WHERE x = %1"_s.arg(rowCount));
    EXPECT_EQ(numberOf([&] { database.execute(u"CREATE UNIQUE INDEX names ON big (name)"_s); }), 3022);
    database.execute(u"UPDATE big SET name = 'row %1' WHERE x = %1"_s.arg(rowCount));
    database.execute(u"DELETE FROM keys WHERE k = %1"_s.arg(rowCount - 1));
    EXPECT_EQ(numberOf([&] { database.createRelation(relation(u"r"_s, u"keys"_s, u"big"_s, 0, u"k"_s, u"x"_s)); }),
              3379);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(alter(u"x / 2"_s), QString());
    EXPECT_EQ(rows(u"SELECT Sum(share) AS s FROM big"_s), u"10000050000"_s);
    workspace.commitTrans();
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM keys WHERE k = -1"_s), u"1"_s);
    expectSound();
}

TEST_F(LargeTableTest, AFullDiskLosesNothing)
{
    const int pages = rawRows(u"PRAGMA page_count"_s).toInt();
    const QList<std::pair<const char *, std::function<void()>>> changes{
        {"drop a field", [&] { database.deleteField(u"big", u"old"); }},
        {"an index", [&] { database.execute(u"CREATE INDEX names ON big (name, x)"_s); }},
        {"a relation", [&] { database.createRelation(relation(u"r"_s, u"keys"_s, u"big"_s, 0, u"k"_s, u"id"_s)); }},
        {"an insert", [&] { database.execute(u"INSERT INTO big (x, name) SELECT x, name FROM big"_s); }},
        {"an update", [&] { database.execute(u"UPDATE big SET name = name & ' and something more'"_s); }},
        {"a new table", [&] { database.execute(u"SELECT * INTO copy FROM big"_s); }},
    };
    for (const auto &[name, change] : changes) {
        for (const bool inTransaction : {false, true}) {
            setMaxPageCount(database, pages + 100);
            if (inTransaction) {
                workspace.beginTrans();
                database.execute(u"INSERT INTO keys (k) VALUES (-1)"_s);
            }
            EXPECT_EQ(numberOf(change), 3026) << name;
            if (inTransaction) {
                // SQLite can have rolled back the whole transaction; commit then reports it.
                const int committed = numberOf([&] { workspace.commitTrans(); });
                if (committed != 0) {
                    EXPECT_EQ(committed, 3034) << name;
                    workspace.rollback();
                }
                EXPECT_EQ(rows(u"SELECT Count(*) AS n FROM keys WHERE k = -1"_s), committed == 0 ? u"1"_s : u"0"_s)
                    << name;
                database.execute(u"DELETE FROM keys WHERE k = -1"_s);
            }
            EXPECT_EQ(content(), before) << name;
        }
    }
    expectSound();
    setMaxPageCount(database, 1'000'000);
    database.deleteField(u"big", u"old");
    database.createRelation(relation(u"r"_s, u"keys"_s, u"big"_s, 0, u"k"_s, u"x"_s));
    EXPECT_EQ(numberOf([&] { database.execute(u"UPDATE big SET x = -5 WHERE x = 7"_s); }), 3201);
    expectSound();
}

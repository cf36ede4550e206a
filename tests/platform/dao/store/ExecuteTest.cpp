#include "Fixture.h"

#include <dao/DatabaseImpl.h>

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::table;

class ExecuteTest : public StoreTest
{
protected:
    ExecuteTest()
    {
        database.createTable(table(u"t"_s,
                                   {field(u"id"_s, DataType::Long, 0, "A"), field(u"name"_s, DataType::Text, 10, "R"),
                                    field(u"x"_s, DataType::Integer, 0, "", u"<= 100"_s)},
                                   {index(u"pk"_s, {u"id"_s}, true), index(u"u"_s, {u"x"_s}, false, true)}));
        for (int x = 1; x <= 5; ++x)
            append(u"t"_s, {{u"name"_s, text(u"n%1"_s.arg(x))}, {u"x"_s, number(x)}});
    }
    QString stored() { return rawRows(u"SELECT x FROM t ORDER BY id"_s); }
    int run(const QString &sql) { return database.execute(sql); }
    QString failure(const QString &sql)
    {
        return errorOf([&] { run(sql); });
    }
};

TEST_F(ExecuteTest, OneBadRowUndoesTheStatement)
{
    EXPECT_EQ(failure(u"UPDATE t SET x = x + 96"_s).left(20), u"3317 DAO.QueryDef: O"_s);
    EXPECT_EQ(failure(u"UPDATE t SET x = 1 WHERE x > 1"_s).left(4), u"3022"_s);
    EXPECT_EQ(failure(u"UPDATE t SET name = Null WHERE x = 5"_s).left(4), u"3314"_s);
    EXPECT_EQ(failure(u"UPDATE t SET x = 40000 WHERE x = 5"_s).left(4), u"3349"_s);
    EXPECT_EQ(failure(u"UPDATE t SET name = 'longer than ten' WHERE x = 5"_s).left(4), u"3163"_s);
    EXPECT_EQ(stored(), u"1 2 3 4 5"_s);
    workspace.beginTrans();
    run(u"UPDATE t SET x = 50 WHERE x = 5"_s);
    EXPECT_EQ(failure(u"UPDATE t SET x = x + 96"_s).left(4), u"3317"_s);
    workspace.commitTrans();
    EXPECT_EQ(stored(), u"1 2 3 4 50"_s) << "what the transaction did before stays";
}

TEST_F(ExecuteTest, SelectsAreNotExecutedAndParametersAreNeeded)
{
    EXPECT_EQ(failure(u"SELECT * FROM t"_s), u"3065 DAO.QueryDef: Cannot execute a select query."_s);
    EXPECT_EQ(failure(u"DELETE FROM t WHERE x = [which]"_s), u"3061 DAO.QueryDef: Too few parameters. Expected 1."_s);
    Recordset set(database);
    EXPECT_EQ(errorOf([&] { set.open(Recordset::Type::Dynaset, u"DELETE FROM t"_s); }),
              u"3219 DAO.Recordset: Invalid operation."_s);
    QueryDef query(database, u"DELETE FROM t WHERE x = [which]"_s);
    query.setParameter(0, number(2));
    EXPECT_EQ(query.execute(), 1);
    query.setParameter(0, number(4));
    EXPECT_EQ(query.execute(), 1);
    EXPECT_EQ(query.execute(), 0);
    EXPECT_EQ(stored(), u"1 3 5"_s);
}

TEST_F(ExecuteTest, SystemTablesAreOutOfReach)
{
    for (const QString &sql :
         {u"DELETE FROM _dao_fields"_s, u"UPDATE _dao_properties SET [value] = 'x'"_s,
          u"INSERT INTO _dao_queries (name, sql) VALUES ('a', 'b')"_s, u"DROP TABLE _dao_fields"_s})
        EXPECT_FALSE(failure(sql).isEmpty()) << sql.toStdString();
    EXPECT_EQ(rows(u"SELECT name FROM _dao_tables"_s), u"t"_s);
}

TEST_F(ExecuteTest, DefinitionsBySql)
{
    run(u"CREATE TABLE plans (name TEXT(50) NOT NULL CONSTRAINT primary_key PRIMARY KEY, note MEMO)"_s);
    run(u"CREATE TABLE entries (num COUNTER, name TEXT(50), CONSTRAINT rel FOREIGN KEY (name) REFERENCES plans (name))"_s);
    EXPECT_EQ(failure(u"INSERT INTO entries (name) VALUES ('P')"_s).left(4), u"3201"_s);
    run(u"INSERT INTO plans (name) VALUES ('P')"_s);
    run(u"INSERT INTO entries (name) VALUES ('p')"_s);
    EXPECT_EQ(
        failure(u"DELETE FROM plans"_s),
        u"3200 DAO.QueryDef: The record cannot be deleted or changed because table 'entries' includes related records."_s);
    run(u"ALTER TABLE entries ADD COLUMN x SHORT"_s);
    run(u"UPDATE entries SET x = 12"_s);
    run(u"ALTER TABLE entries ALTER COLUMN x TEXT(5)"_s);
    EXPECT_EQ(rawRows(u"SELECT num, name, quote(x) FROM entries"_s), u"1|p|'12'"_s);
    EXPECT_EQ(failure(u"ALTER TABLE entries ALTER COLUMN name LONG"_s).left(4), u"3281"_s);
    run(u"CREATE INDEX xs ON entries (x DESC)"_s);
    EXPECT_TRUE(database.table(u"entries").index(u"xs")->fields.first().descending);
    EXPECT_EQ(failure(u"DROP INDEX none ON entries"_s).left(4), u"3372"_s);
    run(u"DROP INDEX xs ON entries"_s);
    run(u"ALTER TABLE entries DROP COLUMN x"_s);
    EXPECT_EQ(failure(u"ALTER TABLE entries DROP CONSTRAINT none"_s).left(4), u"3371"_s);
    try {
        run(u"ALTER TABLE entries DROP CONSTRAINT none"_s);
    } catch (const DaoException &exception) {
        EXPECT_EQ(exception.where().column, 37);
    }
    run(u"ALTER TABLE entries DROP CONSTRAINT rel"_s);
    run(u"DROP TABLE plans"_s);
    EXPECT_EQ(failure(u"DROP TABLE plans"_s).left(4), u"3376"_s);
    EXPECT_EQ(rawRows(u"SELECT * FROM entries"_s), u"1|p"_s);
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(ExecuteTest, SelectIntoMakesATableOrNothing)
{
    EXPECT_EQ(run(u"SELECT id, name, x * 2 AS twice INTO copy FROM t WHERE x > 3"_s), 2);
    EXPECT_EQ(rawRows(u"SELECT * FROM copy"_s), u"4|n4|8 5|n5|10"_s);
    EXPECT_EQ(database.table(u"copy").field(u"name")->size, 10);
    EXPECT_EQ(failure(u"SELECT id INTO copy FROM t"_s).left(4), u"3010"_s);
    EXPECT_FALSE(failure(u"SELECT 1 / (x - 3) AS q INTO broken FROM t"_s).isEmpty());
    EXPECT_FALSE(database.hasTable(u"broken"));
}

TEST_F(ExecuteTest, StoredQueriesRunByName)
{
    database.createQuery({u"drop one"_s, u"DELETE FROM t WHERE x = [which]"_s});
    QueryDef query = QueryDef::stored(database, u"Drop One");
    query.setParameter(u"which"_s, number(1));
    EXPECT_EQ(query.execute(), 1);
    EXPECT_EQ(run(u"EXECUTE [drop one] 2"_s), 1);
    database.createQuery({u"rest"_s, u"SELECT name, x FROM t WHERE x >= [from x]"_s});
    Recordset set(database);
    EXPECT_EQ(numberOf([&] { set.open(Recordset::Type::Dynaset, u"rest"_s); }), 3061);
    QueryDef rest(database, u"SELECT name FROM rest WHERE x < 5"_s);
    rest.setParameter(u"from x"_s, number(4));
    set.open(Recordset::Type::Dynaset, rest);
    EXPECT_EQ(set.recordCount(), 1);
    set.edit();
    set.setValue(0, text(u"via"_s));
    set.update();
    EXPECT_EQ(rawRows(u"SELECT name FROM t WHERE x = 4"_s), u"via"_s);
}

TEST_F(ExecuteTest, DomainFunctionsLookIntoOtherTables)
{
    EXPECT_EQ(rows(u"SELECT DLookup('name', 't', 'x = ' & (x + 1)) AS following FROM t WHERE x < 3"_s), u"n2 n3"_s);
    EXPECT_EQ(rows(u"SELECT DCount('*', 't', 'x > ' & x) AS above FROM t WHERE x > 3"_s), u"1 0"_s);
    EXPECT_EQ(numberOf([&] { rows(u"SELECT DLookup('name', 'no' & name) AS v FROM t"_s); }), 3078);
}

TEST_F(ExecuteTest, SeededStatisticsGuideThePlanner)
{
    const auto plan = [&] {
        store::Statement explain(database.impl().connection,
                                 u"EXPLAIN QUERY PLAN SELECT * FROM g WHERE a = 1 AND b = 2"_s);
        return explain.step() ? explain.text(3) : QString();
    };
    database.execute(u"CREATE TABLE g (a LONG, b LONG)"_s);
    database.execute(u"CREATE INDEX a ON g (a)"_s);
    database.execute(u"CREATE INDEX b ON g (b)"_s);
    database.seedStatistics(u"g"_s, 1'000'000, {{u"a"_s, {500'000}}, {u"b"_s, {5}}});
    EXPECT_TRUE(plan().contains(u"g.b"_s)) << plan().toStdString();
    database.seedStatistics(u"g"_s, 1'000'000, {{u"a"_s, {5}}, {u"b"_s, {500'000}}});
    EXPECT_TRUE(plan().contains(u"g.a"_s)) << plan().toStdString();
    database.analyze(u"g"_s);
    EXPECT_EQ(numberOf([&] { database.seedStatistics(u"g"_s, 1, {{u"c"_s, {1}}}); }), 3265);
}

TEST_F(ExecuteTest, ADefinitionIsCompiledAgainWhenTheSchemaChanges)
{
    QueryDef query(database, u"SELECT * FROM t WHERE x = [which]"_s);
    query.setParameter(0, number(3));
    EXPECT_EQ(query.fieldCount(), 3);
    database.addField(u"t", field(u"more"_s, DataType::Long));
    EXPECT_EQ(query.fieldCount(), 4);
    Recordset set(database);
    set.open(Recordset::Type::Dynaset, query);
    EXPECT_EQ(set.recordCount(), 1) << "the value of the parameter is still there";
    database.execute(u"DROP TABLE t"_s);
    EXPECT_EQ(numberOf([&] { query.fieldCount(); }), 3078);
}

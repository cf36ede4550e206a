#include "Fixture.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::table;

class TransactionsTest : public StoreTest
{
protected:
    TransactionsTest()
    {
        database.createTable(
            table(u"t"_s, {field(u"id"_s, DataType::Long, 0, "A"), field(u"x"_s, DataType::Long, 0, "", u"< 100"_s)},
                  {index(u"pk"_s, {u"id"_s}, true)}));
    }
    void add(int x) { append(u"t"_s, {{u"x"_s, number(x)}}); }
    QString stored() { return rawRows(u"SELECT x FROM t ORDER BY id"_s); }
};

TEST_F(TransactionsTest, AnOuterRollbackUndoesAnInnerCommit)
{
    workspace.beginTrans();
    add(1);
    workspace.beginTrans();
    add(2);
    workspace.commitTrans();
    workspace.beginTrans();
    add(3);
    workspace.rollback();
    EXPECT_EQ(stored(), QString()) << "nothing is seen from outside yet";
    workspace.commitTrans();
    EXPECT_EQ(stored(), u"1 2"_s);
    workspace.beginTrans();
    workspace.beginTrans();
    add(4);
    workspace.commitTrans();
    workspace.rollback();
    EXPECT_EQ(stored(), u"1 2"_s);
}

TEST_F(TransactionsTest, FiveLevelsAndNoMore)
{
    for (int level = 0; level < 5; ++level) {
        workspace.beginTrans();
        add(level);
    }
    EXPECT_EQ(errorOf([&] { workspace.beginTrans(); }),
              u"3003 DAO.Workspace: Could not start transaction; too many transactions already nested."_s);
    workspace.rollback();
    for (int level = 0; level < 4; ++level)
        workspace.commitTrans();
    EXPECT_EQ(stored(), u"0 1 2 3"_s);
    const QString none =
        u"3034 DAO.Workspace: You tried to commit or roll back a transaction without first using BeginTrans."_s;
    EXPECT_EQ(errorOf([&] { workspace.commitTrans(); }), none);
    EXPECT_EQ(errorOf([&] { workspace.rollback(); }), none);
}

TEST_F(TransactionsTest, LeavingAScopeOrAWorkspaceRollsBack)
{
    {
        Transaction transaction(workspace);
        add(1);
    }
    EXPECT_EQ(workspace.transactionDepth(), 0);
    {
        Workspace other;
        Database same(other);
        same.open(path());
        other.beginTrans();
        Recordset rows(same);
        rows.open(Recordset::Type::TableAppend, u"t"_s);
        rows.addNew();
        rows.setValue(1, number(2));
        rows.update();
    }
    EXPECT_EQ(stored(), QString());
    workspace.beginTrans();
    add(3);
    database.close();
    EXPECT_EQ(stored(), QString());
    workspace.rollback();
}

TEST_F(TransactionsTest, AllDatabasesOfAWorkspaceTakePart)
{
    Database second(workspace);
    workspace.beginTrans();
    second.create(path(u"second.mdb"_s), {});
    second.execute(u"CREATE TABLE u (y LONG)"_s);
    add(1);
    workspace.rollback();
    EXPECT_EQ(stored(), QString());
    EXPECT_FALSE(second.hasTable(u"u"));
}

TEST_F(TransactionsTest, NothingIsLockedWhileNothingIsWritten)
{
    workspace.beginTrans();
    EXPECT_EQ(raw(u"INSERT INTO t (x) VALUES (7)"_s), QString());
    workspace.commitTrans();
    EXPECT_EQ(stored(), u"7"_s);
}

TEST_F(TransactionsTest, ADefinitionThatFailsHalfwayLeavesTheTableAndItsRows)
{
    database.execute(u"CREATE TABLE big (m MEMO, old LONG)"_s);
    workspace.beginTrans();
    for (int i = 0; i < 50; ++i)
        append(u"big"_s, {{u"m"_s, text(QString(20000, u'x'))}});
    workspace.commitTrans();
    setMaxPageCount(database, 320);
    EXPECT_EQ(numberOf([&] { database.deleteField(u"big", u"old"); }), 3026);
    setMaxPageCount(database, 1'000'000);
    EXPECT_EQ(database.table(u"big").fields.size(), 2);
    EXPECT_EQ(rawRows(u"SELECT count(*), sum(length(m)) FROM big"_s), u"50|1000000"_s);
    EXPECT_EQ(rawRows(u"PRAGMA integrity_check"_s), u"ok"_s);
    database.deleteField(u"big", u"old");
    EXPECT_EQ(rawRows(u"SELECT count(*), sum(length(m)) FROM big"_s), u"50|1000000"_s);
}

#include "Fixture.h"

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::table;
using Type = Recordset::Type;

class DynasetTest : public StoreTest
{
protected:
    DynasetTest()
    {
        database.createTable(
            table(u"t"_s,
                  {field(u"id"_s, DataType::Long, 0, "A"), field(u"name"_s, DataType::Text, 10, "R"),
                   field(u"x"_s, DataType::Integer, 0, "", u">= 0"_s, u"5"_s), field(u"done"_s, DataType::Boolean),
                   field(u"day"_s, DataType::Date), field(u"volts"_s, DataType::Single)},
                  {index(u"pk"_s, {u"id"_s}, true)}));
        for (const auto &[name, x] : {std::pair{u"a"_s, 3}, {u"b"_s, 1}, {u"c"_s, 2}})
            append(u"t"_s, {{u"name"_s, text(name)}, {u"x"_s, number(x)}});
        set.emplace(database);
    }
    void open(const QString &sql, Type type = Type::Dynaset) { set->open(type, sql); }
    QString name() { return textOf(set->value(u"name"_s)); }

    std::optional<Recordset> set;
};

TEST_F(DynasetTest, ValuesHaveTheTypesOfTheirFields)
{
    append(u"t"_s, {{u"name"_s, text(u"d"_s)},
                    {u"x"_s, number(7)},
                    {u"done"_s, Value::fromBoolean(true)},
                    {u"day"_s, Value::fromDate(37623.5)},
                    {u"volts"_s, Value::fromFloat(0.9F)}});
    for (const Type type : {Type::Dynaset, Type::Snapshot}) {
        open(u"SELECT id, name, x, done, day, volts, x / 2 AS half, Null AS nothing FROM t WHERE name = 'D'"_s, type);
        EXPECT_EQ(set->value(0), Value::fromLong(4));
        EXPECT_EQ(set->value(1), Value::fromText(u"d"_s));
        EXPECT_EQ(set->value(2), Value::fromShort(7));
        EXPECT_EQ(set->value(3), Value::fromBoolean(true));
        EXPECT_EQ(set->value(4), Value::fromDate(37623.5));
        EXPECT_EQ(set->value(5), Value::fromFloat(0.9F));
        EXPECT_EQ(set->value(6), Value::fromDouble(3.5));
        EXPECT_TRUE(set->value(7).isNull());
        EXPECT_EQ(set->field(1).sourceTable, u"t"_s);
        EXPECT_EQ(set->field(1).size, 10);
        EXPECT_EQ(set->fieldIndex(u"name"), 1);
        EXPECT_EQ(set->fieldIndex(u"Name"), -1) << "an ordinal is found by the exact name only";
        EXPECT_EQ(set->value(u"NAME"_s), Value::fromText(u"d"_s));
        EXPECT_EQ(numberOf([&] { set->value(u"nothing at all"_s); }), 3265);
    }
}

TEST_F(DynasetTest, MembershipIsFixedAndValuesAreLive)
{
    open(u"SELECT * FROM t WHERE x < 3 ORDER BY x"_s);
    EXPECT_EQ(set->recordCount(), 2);
    EXPECT_EQ(name(), u"b"_s);
    database.execute(u"UPDATE t SET x = 9, name = 'B2' WHERE name = 'b'"_s);
    append(u"t"_s, {{u"name"_s, text(u"new"_s)}, {u"x"_s, number(0)}});
    EXPECT_EQ(name(), u"B2"_s) << "a row that no longer fits stays, with its new values";
    EXPECT_EQ(set->recordCount(), 2) << "a row of someone else does not come in";
    set->moveNext();
    EXPECT_EQ(name(), u"c"_s);
    set->requery();
    EXPECT_EQ(set->recordCount(), 2);
    EXPECT_EQ(name(), u"new"_s);
}

TEST_F(DynasetTest, RowsDeletedElsewhereReadAsDeleted)
{
    open(u"t"_s);
    set->moveNext();
    raw(u"DELETE FROM t WHERE name = 'b'"_s);
    EXPECT_EQ(errorOf([&] { name(); }), u"3167 DAO.Recordset: Record is deleted."_s);
    EXPECT_EQ(numberOf([&] { set->edit(); }), 3167);
    EXPECT_EQ(numberOf([&] { set->deleteRow(); }), 3167);
    set->moveNext();
    EXPECT_EQ(name(), u"c"_s);
    set->movePrevious();
    EXPECT_EQ(set->recordCount(), 3);
}

TEST_F(DynasetTest, PositionsAndTheirEnds)
{
    open(u"SELECT name FROM t ORDER BY name"_s);
    EXPECT_FALSE(set->isBof());
    set->movePrevious();
    EXPECT_TRUE(set->isBof());
    EXPECT_EQ(errorOf([&] { name(); }), u"3021 DAO.Recordset: No current record."_s);
    EXPECT_EQ(numberOf([&] { set->movePrevious(); }), 3021);
    set->moveLast();
    EXPECT_EQ(set->position(), 2);
    set->moveNext();
    EXPECT_TRUE(set->isEof());
    EXPECT_EQ(numberOf([&] { set->moveNext(); }), 3021);
    EXPECT_EQ(numberOf([&] { set->edit(); }), 3021);
    set->setPosition(1);
    EXPECT_EQ(name(), u"b"_s);
    EXPECT_EQ(numberOf([&] { set->setPosition(3); }), 3021);
    open(u"SELECT name FROM t WHERE x > 100"_s);
    EXPECT_TRUE(set->isBof() && set->isEof());
    EXPECT_EQ(numberOf([&] { set->moveFirst(); }), 3021);
}

TEST_F(DynasetTest, EditsAreSavedOrDropped)
{
    open(u"SELECT * FROM t ORDER BY name"_s);
    EXPECT_EQ(errorOf([&] { set->setValue(2, number(1)); }),
              u"3020 DAO.Recordset: Update or CancelUpdate without AddNew or Edit."_s);
    set->edit();
    set->setValue(u"x"_s, number(8));
    EXPECT_EQ(set->value(u"x"_s), Value::fromShort(8)) << "the new value is read before it is saved";
    set->update();
    EXPECT_EQ(numberOf([&] { set->update(); }), 3020);
    set->edit();
    set->setValue(u"x"_s, number(9));
    set->moveNext();
    EXPECT_EQ(numberOf([&] { set->update(); }), 3020) << "a move drops the edit";
    set->edit();
    set->setValue(u"x"_s, number(-1));
    EXPECT_EQ(numberOf([&] { set->update(); }), 3317);
    set->setValue(u"x"_s, number(4));
    set->update();
    EXPECT_EQ(rawRows(u"SELECT name, x FROM t"_s), u"a|8 b|4 c|2"_s);
    EXPECT_EQ(numberOf([&] {
                  set->edit();
                  set->setValue(u"id"_s, number(77));
              }),
              3164);
}

TEST_F(DynasetTest, NewRowsComeLast)
{
    open(u"SELECT * FROM t ORDER BY x"_s);
    const QByteArray before = set->bookmark();
    set->addNew();
    EXPECT_EQ(set->value(u"x"_s), Value::fromShort(5)) << "the default is seen before the row is saved";
    EXPECT_EQ(numberOf([&] { set->update(); }), 3314);
    set->setValue(u"name"_s, text(u"z"_s));
    set->update();
    EXPECT_EQ(set->bookmark(), before) << "the current row stays the current row";
    EXPECT_EQ(set->recordCount(), 4);
    set->setBookmark(set->lastModified());
    EXPECT_EQ(name(), u"z"_s);
    EXPECT_EQ(set->position(), 3);
    EXPECT_EQ(set->value(u"x"_s), Value::fromShort(5));
    EXPECT_EQ(set->value(u"id"_s), Value::fromLong(4));
    // New rows can be added to an empty result.
    open(u"SELECT * FROM t WHERE x > 1000"_s);
    set->addNew();
    set->setValue(u"name"_s, text(u"y"_s));
    set->update();
    set->moveFirst();
    EXPECT_EQ(name(), u"y"_s);
}

TEST_F(DynasetTest, DeletedRowsStayCurrentUntilAMove)
{
    open(u"SELECT * FROM t ORDER BY name"_s);
    const QByteArray first = set->bookmark();
    set->moveNext();
    const QByteArray second = set->bookmark();
    set->moveNext();
    const QByteArray third = set->bookmark();
    set->setBookmark(second);
    set->deleteRow();
    EXPECT_EQ(numberOf([&] { name(); }), 3167);
    EXPECT_EQ(numberOf([&] { set->bookmark(); }), 3167);
    EXPECT_FALSE(set->isEof());
    set->moveNext();
    EXPECT_EQ(name(), u"c"_s);
    EXPECT_EQ(numberOf([&] { set->setBookmark(second); }), 3167);
    set->setBookmark(first);
    EXPECT_EQ(name(), u"a"_s);
    set->setBookmark(third);
    EXPECT_EQ(name(), u"c"_s);
    set->deleteRow();
    set->movePrevious();
    EXPECT_EQ(name(), u"a"_s);
    EXPECT_EQ(rawRows(u"SELECT name FROM t"_s), u"a"_s);
    EXPECT_EQ(set->recordCount(), 1);
}

TEST_F(DynasetTest, ThousandsOfRowsAreDeletedOneByOne)
{
    constexpr int count = 20'000;
    raw(u"DELETE FROM t"_s);
    raw(u"INSERT INTO t (name, x) WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
        "SELECT 'n', i FROM n"_s.arg(count - 1));
    const Transaction transaction(workspace);
    open(u"SELECT x FROM t"_s);
    const auto x = [&] { return set->value(0).integer(); };
    std::vector<QByteArray> bookmarks;
    for (; !set->isEof(); set->moveNext())
        bookmarks.push_back(set->bookmark());
    // Deletes every third row, then the remaining rows of the first half from its end.
    for (set->moveFirst(); !set->isEof(); set->moveNext()) {
        if (x() % 3 == 0)
            set->deleteRow();
    }
    EXPECT_EQ(set->recordCount(), count - (count + 2) / 3);
    for (const int row : {0, 1, 5000, 13'332}) {
        set->setPosition(row);
        EXPECT_EQ(x(), row / 2 * 3 + row % 2 + 1);
        set->setBookmark(bookmarks[size_t(x())]);
        EXPECT_EQ(set->position(), row);
    }
    EXPECT_EQ(numberOf([&] { set->setBookmark(bookmarks[9]); }), 3167);
    set->addNew();
    set->setValue(0, number(7));
    EXPECT_EQ(numberOf([&] { set->update(); }), 3314);
    open(u"SELECT x, name FROM t"_s);
    for (set->setPosition(6000); !set->isBof(); set->movePrevious())
        set->deleteRow();
    EXPECT_EQ(set->recordCount(), 13'333 - 6001);
    set->addNew();
    set->setValue(0, number(0));
    set->setValue(1, text(u"new"_s));
    set->update();
    set->setBookmark(set->lastModified());
    EXPECT_EQ(set->position(), 13'333 - 6001);
    set->deleteRow();
    set->movePrevious();
    EXPECT_EQ(x(), count - 1);
    set->moveFirst();
    EXPECT_EQ(x(), 9002);
}

TEST_F(DynasetTest, TextsThatAreKeptAreNotMixedUp)
{
    raw(u"INSERT INTO t (name) WITH RECURSIVE n(i) AS (SELECT 1000 UNION ALL SELECT i + 1 FROM n WHERE i < 4999) "
        "SELECT 'n' || i FROM n"_s);
    open(u"SELECT name FROM t WHERE name Like 'n*' ORDER BY name"_s, Type::Snapshot);
    int number = 1000;
    for (; !set->isEof(); set->moveNext())
        ASSERT_EQ(name(), u"n%1"_s.arg(number++));
    EXPECT_EQ(number, 5000);
}

TEST_F(DynasetTest, BookmarksBelongToTheirRecordsetAndRun)
{
    open(u"t"_s);
    const QByteArray bookmark = set->bookmark();
    Recordset other(database);
    other.open(Type::Dynaset, u"t"_s);
    EXPECT_EQ(errorOf([&] { other.setBookmark(bookmark); }), u"3159 DAO.Recordset: Not a valid bookmark."_s);
    EXPECT_EQ(numberOf([&] { set->setBookmark(QByteArray("nonsense")); }), 3159);
    set->requery();
    EXPECT_EQ(numberOf([&] { set->setBookmark(bookmark); }), 3159);
}

TEST_F(DynasetTest, ResultsThatCannotBeUpdatedAreReadAllTheSame)
{
    for (const QString &sql :
         {u"SELECT DISTINCT name FROM t ORDER BY name"_s, u"SELECT Max(t.name) AS top, x FROM t GROUP BY x"_s,
          u"SELECT name FROM t UNION SELECT name FROM t"_s}) {
        open(sql);
        EXPECT_EQ(set->recordCount(), 3) << sql.toStdString();
        EXPECT_FALSE(set->isUpdatable());
        set->moveLast();
        const QByteArray last = set->bookmark();
        const QString name = textOf(set->value(0));
        set->moveFirst();
        EXPECT_EQ(errorOf([&] { set->edit(); }),
                  u"3027 DAO.Recordset: Cannot update.  Database or object is read-only."_s);
        EXPECT_EQ(numberOf([&] { set->addNew(); }), 3027);
        EXPECT_EQ(numberOf([&] { set->deleteRow(); }), 3027);
        set->setBookmark(last);
        EXPECT_EQ(textOf(set->value(0)), name);
    }
    // The copy is in the scratch database, so a rollback does not remove it.
    workspace.beginTrans();
    open(u"SELECT DISTINCT x FROM t ORDER BY x"_s);
    workspace.rollback();
    EXPECT_EQ(set->value(0), Value::fromShort(1));
}

TEST_F(DynasetTest, ExpressionsCannotBeSet)
{
    open(u"SELECT name, x + 1 AS more FROM t"_s);
    set->edit();
    EXPECT_EQ(errorOf([&] { set->setValue(1, number(1)); }),
              u"3113 DAO.Recordset: Cannot update 'more'; field not updatable."_s);
    set->setValue(0, text(u"A2"_s));
    set->update();
    EXPECT_EQ(rawRows(u"SELECT name FROM t WHERE id = 1"_s), u"A2"_s);
}

TEST_F(DynasetTest, ARollbackIsSeenByWhatIsOpen)
{
    open(u"SELECT * FROM t ORDER BY name"_s);
    workspace.beginTrans();
    set->edit();
    set->setValue(u"name"_s, text(u"a2"_s));
    set->update();
    EXPECT_EQ(name(), u"a2"_s);
    set->addNew();
    set->setValue(u"name"_s, text(u"d"_s));
    set->update();
    const QByteArray added = set->lastModified();
    workspace.rollback();
    EXPECT_EQ(name(), u"a"_s);
    set->setBookmark(added);
    EXPECT_EQ(numberOf([&] { name(); }), 3167);
}

TEST_F(DynasetTest, ASnapshotGoesForwardAndOutlivesARollback)
{
    workspace.beginTrans();
    append(u"t"_s, {{u"name"_s, text(u"d"_s)}});
    open(u"SELECT name FROM t ORDER BY name"_s, Type::Snapshot);
    EXPECT_EQ(numberOf([&] { set->movePrevious(); }), 3219);
    EXPECT_EQ(numberOf([&] { set->bookmark(); }), 3219);
    EXPECT_EQ(numberOf([&] { set->edit(); }), 3027);
    set->moveNext();
    workspace.rollback();
    QString seen;
    for (; !set->isEof(); set->moveNext())
        seen += name();
    EXPECT_EQ(seen, u"bcd"_s);
    EXPECT_EQ(set->recordCount(), 4);
    set->moveFirst();
    EXPECT_EQ(name(), u"a"_s);
    database.addField(u"t", field(u"more"_s, DataType::Long, 0, "", {}, u"1"_s));
    set->moveNext();
    EXPECT_EQ(name(), u"b"_s) << "nor does a change of the table stop it";
}

TEST_F(DynasetTest, ParametersAreCopiedAndSetForTheNextRun)
{
    QueryDef query(database, u"SELECT name FROM t WHERE x = [wanted x] AND name <> [other]"_s);
    EXPECT_EQ(query.parameterCount(), 2);
    EXPECT_EQ(query.parameter(0).name, u"wanted x"_s);
    EXPECT_EQ(errorOf([&] { set->open(Type::Dynaset, query); }),
              u"3061 DAO.Recordset: Too few parameters. Expected 2."_s);
    query.setParameter(u"WANTED X"_s, number(1));
    query.setParameter(1, text(u"q"_s));
    set->open(Type::Dynaset, query);
    EXPECT_EQ(name(), u"b"_s);
    query.setParameter(0, number(2));
    set->requery();
    EXPECT_EQ(name(), u"b"_s) << "the recordset has its own";
    set->setParameter(u"wanted x"_s, text(u"3"_s));
    set->requery();
    EXPECT_EQ(name(), u"a"_s);
    EXPECT_EQ(numberOf([&] { set->setParameter(0, text(u"three"_s)); }), 3421);
    EXPECT_EQ(numberOf([&] { set->setParameter(u"none"_s, number(1)); }), 3265);
}

/// Two tables, one row of the first for many of the second.
class JoinTest : public DynasetTest
{
protected:
    JoinTest()
    {
        database.execute(u"CREATE TABLE plans (name TEXT(20) NOT NULL CONSTRAINT pk PRIMARY KEY, model TEXT(20))"_s);
        database.execute(u"CREATE TABLE entries (plan TEXT(20), num LONG)"_s);
        append(u"plans"_s, {{u"name"_s, text(u"P"_s)}, {u"model"_s, text(u"m"_s)}});
        append(u"plans"_s, {{u"name"_s, text(u"Q"_s)}});
        for (int num = 1; num <= 3; ++num)
            append(u"entries"_s, {{u"plan"_s, text(num < 3 ? u"P"_s : u"none"_s)}, {u"num"_s, number(num)}});
    }
    QString inner =
        u"SELECT e.plan, e.num, p.name, p.model FROM plans AS p INNER JOIN entries AS e ON p.name = e.plan ORDER BY e.num"_s;
    QString outer =
        u"SELECT e.plan, e.num, p.name, p.model FROM entries AS e LEFT JOIN plans AS p ON e.plan = p.name ORDER BY e.num"_s;
};

TEST_F(JoinTest, BothSidesCanBeEdited)
{
    open(inner);
    ASSERT_EQ(set->recordCount(), 2);
    set->edit();
    set->setValue(u"num"_s, number(10));
    set->setValue(u"model"_s, text(u"new"_s));
    set->update();
    set->moveNext();
    EXPECT_EQ(set->value(u"model"_s), text(u"new"_s)) << "the one side is the same row in both";
    EXPECT_EQ(rawRows(u"SELECT num FROM entries"_s), u"10 2 3"_s);
}

TEST_F(JoinTest, TheManySideIsDeletedAndAdded)
{
    open(inner);
    set->deleteRow();
    EXPECT_EQ(rawRows(u"SELECT (SELECT count(*) FROM plans), (SELECT count(*) FROM entries)"_s), u"2|2"_s);
    set->addNew();
    set->setValue(u"plan"_s, text(u"Q"_s));
    set->setValue(u"num"_s, number(7));
    set->update();
    set->setBookmark(set->lastModified());
    EXPECT_EQ(set->value(u"name"_s), text(u"Q"_s));
    EXPECT_EQ(set->recordCount(), 2);
}

TEST_F(JoinTest, AnAddedRowIsTheLastOneWhetherTheJoinReturnsItOrNot)
{
    const auto add = [this](int num) {
        set->addNew();
        set->setValue(u"num"_s, number(num));
        set->update();
        set->setBookmark(set->lastModified());
    };
    const QString neither = inner.section(u" ORDER"_s, 0, 0) + u" WHERE e.num > [least]"_s;
    for (const QString &sql : {inner, outer, neither}) {
        QueryDef query(database, sql);
        if (query.parameterCount() > 0)
            query.setParameter(0, number(100));
        set.emplace(database);
        set->open(Recordset::Type::Dynaset, query);
        const qint64 before = set->recordCount();
        add(50);
        EXPECT_EQ(set->recordCount(), before + 1);
        EXPECT_EQ(set->position(), before);
        EXPECT_EQ(set->value(u"num"_s), number(50));
        EXPECT_TRUE(set->value(u"name"_s).isNull());
        set->edit();
        set->setValue(u"num"_s, number(51));
        set->update();
        add(52);
        EXPECT_EQ(set->value(u"num"_s), number(52));
        set->movePrevious();
        EXPECT_EQ(set->value(u"num"_s), number(51));
        set->deleteRow();
        EXPECT_EQ(rawRows(u"SELECT group_concat(num, ' ') FROM entries"_s), u"1 2 3 52"_s);
        database.execute(u"DELETE FROM entries WHERE num = 52"_s);
    }
}

TEST_F(JoinTest, TheAbsentSideOfAnOuterJoinReadsNullAndCannotBeSet)
{
    open(outer);
    set->moveLast();
    EXPECT_EQ(set->value(u"plan"_s), text(u"none"_s));
    EXPECT_TRUE(set->value(u"model"_s).isNull());
    set->edit();
    set->setValue(u"model"_s, text(u"x"_s));
    EXPECT_NE(numberOf([&] { set->update(); }), 0);
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM plans"_s), u"2"_s);
}

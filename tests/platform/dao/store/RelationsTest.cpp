#include "Fixture.h"

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::relation;
using build::table;

class RelationsTest : public StoreTest
{
protected:
    RelationsTest()
    {
        database.createTable(
            table(u"plans"_s, {field(u"name"_s, DataType::Text, 50, "R"), field(u"desc"_s, DataType::Memo, 0, "Z")},
                  {index(u"primary_key"_s, {u"name"_s}, true)}));
        database.execute(u"CREATE TABLE plan_entry (name TEXT(50), entry_num LONG)"_s);
    }
    void relate(int attributes)
    {
        database.createRelation(
            relation(u"plans_rel"_s, u"plans"_s, u"plan_entry"_s, attributes, u"name"_s, u"name"_s));
    }
    void fill()
    {
        append(u"plans"_s, {{u"name"_s, text(u"Alpha"_s)}});
        append(u"plans"_s, {{u"name"_s, text(u"Beta"_s)}});
        append(u"plan_entry"_s, {{u"name"_s, text(u"alpha"_s)}, {u"entry_num"_s, number(1)}});
        append(u"plan_entry"_s, {{u"name"_s, text(u"ALPHA"_s)}, {u"entry_num"_s, number(2)}});
        append(u"plan_entry"_s, {{u"name"_s, text(u"Beta"_s)}, {u"entry_num"_s, number(3)}});
    }
    QString entries() { return rawRows(u"SELECT name, entry_num FROM plan_entry ORDER BY entry_num"_s); }
};

TEST_F(RelationsTest, ARelatedRowIsRequired)
{
    relate(UpdateCascade | DeleteCascade);
    fill();
    EXPECT_EQ(
        errorOf([&] {
            append(u"plan_entry"_s, {{u"name"_s, text(u"Gamma"_s)}});
        }),
        u"3201 DAO.Recordset: You cannot add or change a record because a related record is required in table 'plans'."_s);
    append(u"plan_entry"_s, {{u"entry_num"_s, number(4)}});
    EXPECT_EQ(entries(), u"alpha|1 ALPHA|2 Beta|3 -|4"_s) << "no key, no related row needed";
}

TEST_F(RelationsTest, OtherToolsCascadeAndAreRefusedToo)
{
    relate(UpdateCascade | DeleteCascade);
    fill();
    EXPECT_NE(raw(u"UPDATE plan_entry SET name = 'Gamma' WHERE entry_num = 3"_s), QString());
    EXPECT_EQ(raw(u"UPDATE plans SET name = 'ALPHA2' WHERE name = 'Alpha'"_s), QString());
    EXPECT_EQ(entries(), u"ALPHA2|1 ALPHA2|2 Beta|3"_s);
    EXPECT_EQ(raw(u"UPDATE plans SET name = 'alpha2' WHERE name = 'ALPHA2'"_s), QString());
    EXPECT_EQ(entries(), u"alpha2|1 alpha2|2 Beta|3"_s) << "a change of case alone is passed on as well";
    EXPECT_EQ(raw(u"DELETE FROM plans WHERE name = 'alpha2'"_s), QString());
    EXPECT_EQ(entries(), u"Beta|3"_s);
}

TEST_F(RelationsTest, WithoutCascadesTheKeyStays)
{
    relate(0);
    fill();
    const QString text =
        u"dao:3200:The record cannot be deleted or changed because table 'plan_entry' includes related records."_s;
    EXPECT_EQ(raw(u"DELETE FROM plans WHERE name = 'Alpha'"_s), text);
    EXPECT_EQ(raw(u"UPDATE plans SET name = 'Other' WHERE name = 'Alpha'"_s), text);
    EXPECT_EQ(raw(u"UPDATE plans SET name = 'ALPHA', desc = 'x' WHERE name = 'Alpha'"_s), QString());
    EXPECT_EQ(raw(u"DELETE FROM plan_entry WHERE name = 'Alpha'; DELETE FROM plans WHERE name = 'Alpha'"_s), QString());
}

TEST_F(RelationsTest, DefinitionIsChecked)
{
    EXPECT_EQ(numberOf([&] {
                  database.createRelation(relation(u"r"_s, u"plan_entry"_s, u"plans"_s, 0, u"name"_s, u"name"_s));
              }),
              3374);
    EXPECT_EQ(numberOf([&] {
                  database.createRelation(relation(u"r"_s, u"plans"_s, u"plan_entry"_s, 0, u"name"_s, u"entry_num"_s));
              }),
              3368);
    EXPECT_EQ(
        numberOf([&] { database.createRelation(relation(u"r"_s, u"plans"_s, u"plan_entry"_s, 0, u"name"_s, u"x"_s)); }),
        3409);
    RelationInfo empty = relation(u"r"_s, u"plans"_s, u"plan_entry"_s, 0, u"name"_s, u"name"_s);
    empty.fields.clear();
    EXPECT_EQ(numberOf([&] { database.createRelation(empty); }), 3366);
    append(u"plan_entry"_s, {{u"name"_s, text(u"orphan"_s)}});
    EXPECT_EQ(
        errorOf([&] { relate(0); }),
        u"3379 DAO.Relations: Cannot create relationship to enforce referential integrity.  Existing data in table "
        "'plan_entry' violates referential integrity rules in table 'plans'."_s);
    EXPECT_TRUE(database.relations().isEmpty());
    relate(DontEnforce);
    EXPECT_EQ(numberOf([&] { relate(0); }), 3378);
}

TEST_F(RelationsTest, RelatedTablesAndTheirKeysCannotGo)
{
    relate(UpdateCascade);
    EXPECT_EQ(numberOf([&] { database.deleteTable(u"plans"); }), 3281);
    EXPECT_EQ(numberOf([&] { database.deleteTable(u"plan_entry"); }), 3281);
    EXPECT_EQ(numberOf([&] { database.deleteIndex(u"plans", u"primary_key"); }), 3281);
    EXPECT_EQ(numberOf([&] { database.deleteField(u"plan_entry", u"name"); }), 3280);
    const int attributes = database.relations().first().attributes;
    EXPECT_EQ(attributes, int(UpdateCascade));
    database.deleteRelation(u"PLANS_REL");
    append(u"plan_entry"_s, {{u"name"_s, text(u"free"_s)}});
    database.deleteIndex(u"plans", u"primary_key");
    database.deleteTable(u"plans");
    EXPECT_EQ(rawRows(u"SELECT count(*) FROM sqlite_schema WHERE type = 'trigger'"_s), u"0"_s);
}

TEST_F(RelationsTest, ATableMayBeRelatedToItself)
{
    database.execute(u"CREATE TABLE parts (id LONG CONSTRAINT pk PRIMARY KEY, parent LONG)"_s);
    database.createRelation(
        relation(u"tree"_s, u"parts"_s, u"parts"_s, UpdateCascade | DeleteCascade, u"id"_s, u"parent"_s));
    for (int id = 1; id <= 4; ++id)
        append(u"parts"_s, {{u"id"_s, number(id)}, {u"parent"_s, id == 1 ? Value::null() : number(id - 1)}});
    EXPECT_EQ(numberOf([&] { append(u"parts"_s, {{u"id"_s, number(9)}, {u"parent"_s, number(8)}}); }), 3201);
    Recordset parts(database);
    EXPECT_EQ(raw(u"PRAGMA recursive_triggers = ON; DELETE FROM parts WHERE id = 2"_s), QString());
    EXPECT_EQ(rawRows(u"SELECT id FROM parts"_s), u"1"_s);
}

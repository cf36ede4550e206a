#include "Fixture.h"
#include <support/Files.h>

using namespace Qt::StringLiterals;
using namespace dao;
using build::field;
using build::index;
using build::table;

class DefinitionsTest : public StoreTest
{
protected:
    void createReport()
    {
        database.createTable(
            table(u"report"_s,
                  {field(u"recd_num"_s, DataType::Long, 0, "RA"),
                   field(u"row"_s, DataType::Integer, 0, "R", u">= 0 and <= 999"_s, u"0"_s),
                   field(u"volts"_s, DataType::Single), field(u"chan"_s, DataType::Text, 50),
                   field(u"plan"_s, DataType::Text), field(u"is_perm"_s, DataType::Boolean, 0, "", {}, u"1"_s),
                   field(u"comment"_s, DataType::Memo, 0, "Z")},
                  {index(u"recd_num"_s, {u"recd_num"_s}, true), index(u"chan"_s, {u"chan"_s})}));
    }
    void reopen()
    {
        database.close();
        database.open(path());
    }
};

TEST_F(DefinitionsTest, WhatIsDefinedComesBackFromTheFile)
{
    createReport();
    reopen();
    const TableInfo &report = database.table(u"REPORT");
    ASSERT_EQ(report.name, u"report"_s);
    ASSERT_EQ(report.fields.size(), 7);
    EXPECT_EQ(report.fields[0].size, 4);
    EXPECT_TRUE(report.fields[0].isAutoIncrement());
    EXPECT_TRUE(report.fields[1].required);
    EXPECT_EQ(report.fields[1].validationRule, u">= 0 and <= 999"_s);
    EXPECT_EQ(report.fields[1].defaultValue, u"0"_s);
    EXPECT_EQ(report.fields[3].size, 50);
    EXPECT_EQ(report.fields[4].size, 255) << "a text without a size gets the engine's default";
    EXPECT_EQ(report.fields[6].ordinal, 6);
    EXPECT_TRUE(report.fields[6].allowZeroLength);
    ASSERT_EQ(report.indexes.size(), 2);
    EXPECT_TRUE(report.index(u"recd_num")->primary);
    EXPECT_TRUE(report.index(u"recd_num")->unique);
    EXPECT_FALSE(report.index(u"chan")->unique);
}

TEST_F(DefinitionsTest, SystemTablesAreListedAsSuch)
{
    createReport();
    const QStringList names = database.tableNames();
    EXPECT_EQ(names.first(), u"report"_s);
    EXPECT_TRUE(names.contains(u"_dao_fields"_s));
    EXPECT_EQ(database.table(u"_dao_fields").attributes, int(SystemObject));
    EXPECT_EQ(database.schema().sourceNames(), QStringList{u"report"_s});
    EXPECT_EQ(numberOf([&] { append(u"_dao_queries"_s, {{u"name"_s, text(u"x"_s)}}); }), 3027);
    EXPECT_EQ(numberOf([&] { database.deleteTable(u"_dao_fields"); }), 3027);
}

TEST_F(DefinitionsTest, BadDefinitionsAreRefusedAndLeaveNothing)
{
    createReport();
    const auto text = [](const QString &name) { return field(name, DataType::Text, 10); };
    const QString before = rawRows(u"SELECT count(*), (SELECT count(*) FROM _dao_tables) FROM sqlite_schema"_s);
    EXPECT_EQ(errorOf([&] { database.createTable(table(u"Report"_s, {text(u"a"_s)})); }),
              u"3010 DAO.TableDefs: Table 'Report' already exists."_s);
    EXPECT_EQ(numberOf([&] { database.createTable(table(u"t"_s, {})); }), 3264);
    EXPECT_EQ(numberOf([&] { database.createTable(table(u"t"_s, {text(u"a"_s), text(u"A"_s)})); }), 3191);
    for (const QString &bad : {u""_s, u" t"_s, u"a.b"_s, u"a[b"_s, QString(65, u'x'), u"_dao_x"_s, u"a\nb"_s})
        EXPECT_EQ(numberOf([&] { database.createTable(table(bad, {text(u"a"_s)})); }), 3125) << bad.toStdString();
    EXPECT_EQ(numberOf([&] { database.createTable(table(u"t"_s, {field(u"a"_s, DataType::Unknown)})); }), 3259);
    EXPECT_EQ(numberOf([&] { database.createTable(table(u"t"_s, {text(u"a"_s)}, {index(u"i"_s, {u"b"_s})})); }), 3409);
    EXPECT_EQ(errorOf([&] { database.addField(u"report", text(u"CHAN"_s)); }),
              u"3380 DAO.Fields: Field 'CHAN' already exists in table 'report'."_s);
    EXPECT_EQ(errorOf([&] { database.createIndex(u"report", index(u"Chan"_s, {u"volts"_s})); }),
              u"3375 DAO.Indexes: Table 'report' already has an index named 'Chan'."_s);
    EXPECT_EQ(numberOf([&] { database.createIndex(u"report", index(u"pk2"_s, {u"chan"_s}, true)); }), 3283);
    EXPECT_EQ(numberOf([&] { database.deleteField(u"report", u"chan"); }), 3280);
    EXPECT_EQ(numberOf([&] { database.deleteField(u"report", u"nothing"); }), 3265);
    EXPECT_EQ(numberOf([&] { database.deleteTable(u"nothing"); }), 3265);
    EXPECT_EQ(rawRows(u"SELECT count(*), (SELECT count(*) FROM _dao_tables) FROM sqlite_schema"_s), before);
}

TEST_F(DefinitionsTest, NamesMayHoldAlmostAnything)
{
    const QString name = u"it's a \"%1\" table: 100 %"_s;
    database.createTable(table(name,
                               {field(u"rowid"_s, DataType::Long), field(u"from \"x\""_s, DataType::Text, 5, "R")},
                               {index(u"select"_s, {u"from \"x\""_s})}));
    reopen();
    append(name, {{u"rowid"_s, number(7)}, {u"from \"x\""_s, text(u"é"_s)}});
    EXPECT_NE(database.table(name).keyColumn, u"rowid"_s) << "a field hides that name of the row key";
    EXPECT_EQ(errorOf([&] {
                  append(name, {{u"rowid"_s, number(1)}});
              }).section(u" cannot"_s, 0, 0),
              u"3314 DAO.Recordset: The field '"_s + name + u".from \"x\"'"_s);
}

TEST_F(DefinitionsTest, IndexNamesBelongToTheirTables)
{
    for (const QString &name : {u"a"_s, u"b"_s})
        database.createTable(table(name, {field(u"x"_s, DataType::Long)}, {index(u"primary_key"_s, {u"x"_s}, true)}));
    database.deleteIndex(u"a", u"PRIMARY_KEY");
    EXPECT_EQ(database.table(u"a").indexes.size(), 0);
    EXPECT_EQ(database.table(u"b").indexes.size(), 1);
    append(u"a"_s, {{u"x"_s, Value::null()}});
    EXPECT_EQ(numberOf([&] { append(u"b"_s, {{u"x"_s, Value::null()}}); }), 3058);
}

TEST_F(DefinitionsTest, StoredQueriesAndProperties)
{
    database.createQuery({u"report#"_s, u"SELECT 1"_s});
    database.createQuery({u"a query"_s, u"SELECT 2\r\n-- kept as written"_s});
    EXPECT_EQ(errorOf([&] {
                  database.createQuery({u"REPORT#"_s, u""_s});
              }),
              u"3012 DAO.QueryDefs: Object 'REPORT#' already exists."_s);
    database.setQuerySql(u"Report#", u"SELECT 3"_s);
    database.setProperty(u"Title"_s, u"über"_s);
    reopen();
    EXPECT_EQ(database.queryNames(), (QStringList{u"a query"_s, u"report#"_s}));
    EXPECT_EQ(database.query(u"A QUERY").sql, u"SELECT 2\r\n-- kept as written"_s);
    EXPECT_EQ(database.query(u"report#").sql, u"SELECT 3"_s);
    EXPECT_EQ(database.property(u"title"_s), u"über"_s);
    EXPECT_EQ(database.property(u"Locale"_s), u";LANGID=0x0409;CP=1252;COUNTRY=0"_s);
    EXPECT_EQ(database.fileFormat(), FileFormat::Jet4);
    database.deleteQuery(u"a query");
    EXPECT_FALSE(database.hasQuery(u"a query"));
    EXPECT_EQ(numberOf([&] { database.deleteQuery(u"a query"); }), 3265);
}

TEST_F(DefinitionsTest, AnUnchangedQueryDoesNotTouchTheFile)
{
    database.createQuery({u"v"_s, u"SELECT 1"_s});
    database.close();
    const QByteArray before = support::readFile(path());
    database.open(path());
    database.setQuerySql(u"v", u"SELECT 1"_s);
    database.setProperty(u"Format"_s, u"64"_s);
    database.close();
    EXPECT_EQ(support::readFile(path()), before);
}

TEST_F(DefinitionsTest, AnotherConnectionsChangesAreSeen)
{
    Workspace otherWorkspace;
    Database other(otherWorkspace);
    other.open(path());
    createReport();
    EXPECT_TRUE(other.hasTable(u"report"));
    database.createQuery({u"q"_s, u"SELECT 1"_s});
    EXPECT_TRUE(other.hasQuery(u"q"));
    other.deleteTable(u"report");
    EXPECT_FALSE(database.hasTable(u"report"));
}

TEST_F(DefinitionsTest, ARolledBackDefinitionIsForgotten)
{
    workspace.beginTrans();
    createReport();
    EXPECT_TRUE(database.hasTable(u"report"));
    workspace.rollback();
    EXPECT_FALSE(database.hasTable(u"report"));
    createReport();
    append(u"report"_s, {{u"chan"_s, text(u"1"_s)}});
    EXPECT_EQ(rawRows(u"SELECT chan FROM report"_s), u"1"_s);
}

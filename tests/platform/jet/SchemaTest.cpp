#include "TestFiles.h"

using namespace Qt::StringLiterals;
using dao::DataType;

namespace jet::test {
namespace {

class JetSchemaTest : public ::testing::Test
{
protected:
    void SetUp() override { ARVO_NEEDS_TESTDATA(); }
    const Schema &open(const QString &file)
    {
        m_reader = std::make_unique<JetReader>(dataFile(file));
        m_schema = m_reader->readSchema();
        return m_schema;
    }
    const Table &table(const QString &name) const
    {
        for (const Table &table : m_schema.tables) {
            if (table.info.name == name)
                return table;
        }
        throw std::runtime_error("no table " + name.toStdString());
    }
    QStringList remarks() const
    {
        QStringList texts;
        for (const Remark &remark : m_reader->remarks())
            texts.append(remark.text);
        return texts;
    }

    std::unique_ptr<JetReader> m_reader;
    Schema m_schema;
};

// "PUR name: field, -field" for a primary, unique and required index with its second field descending
QString text(const dao::IndexInfo &index)
{
    QStringList fields;
    for (const dao::IndexField &field : index.fields)
        fields.append(field.descending ? u'-' + field.name : field.name);
    QString flags;
    flags += index.primary ? u"P"_s : QString();
    flags += index.unique ? u"U"_s : QString();
    flags += index.required ? u"R"_s : QString();
    flags += index.ignoreNulls ? u"I"_s : QString();
    flags += index.foreign ? u"F"_s : QString();
    return flags + u' ' + index.name + u": "_s + fields.join(u", "_s);
}

QStringList indexTexts(const Table &table)
{
    QStringList texts;
    for (const dao::IndexInfo &index : table.info.indexes)
        texts.append(text(index));
    texts.sort();
    return texts;
}

QStringList relationTexts(const Schema &schema)
{
    QStringList texts;
    for (const dao::RelationInfo &relation : schema.relations) {
        QStringList fields;
        for (const dao::RelationField &field : relation.fields)
            fields.append(field.field + u'=' + field.foreignField);
        texts.append(QStringList{relation.name, relation.table, relation.foreignTable,
                                 QString::number(relation.attributes, 16), fields.join(u',')}
                         .join(u' '));
    }
    texts.sort();
    return texts;
}

TEST_F(JetSchemaTest, FieldsWithTheirProperties)
{
    const Schema &schema = open(u"suite-current.mdb"_s);
    EXPECT_EQ(schema.jetVersion, 4);
    EXPECT_TRUE(remarks().isEmpty());
    ASSERT_EQ(schema.tables.size(), 12);
    const Table &report = table(u"report"_s);
    ASSERT_EQ(report.info.fields.size(), 43);
    EXPECT_EQ(report.rowCount, 11961);
    EXPECT_EQ(report.lastAutoNumber, 12130);

    const dao::FieldInfo &number = report.info.fields.at(0);
    EXPECT_EQ(number.name, u"recd_num");
    EXPECT_TRUE(number.isAutoIncrement());
    EXPECT_TRUE(number.required);
    EXPECT_EQ(number.attributes, dao::FixedField | dao::AutoIncrement | dao::Updatable);
    const dao::FieldInfo &plan = *report.info.field(u"plan");
    EXPECT_EQ(plan.size, 255);
    EXPECT_EQ(plan.attributes, dao::VariableField | dao::Updatable);
    const dao::FieldInfo &comment = *table(u"repairs"_s).info.field(u"comment");
    EXPECT_EQ(comment.size, 0);
}

TEST_F(JetSchemaTest, TextsOfOldFiles)
{
    EXPECT_EQ(open(u"nwind.mdb"_s).jetVersion, 3);
    const Table &details = table(u"Order Details"_s);
    EXPECT_EQ(details.info.field(u"UnitPrice")->type, DataType::Currency);
    EXPECT_EQ(details.info.field(u"Discount")->validationRule, u"Between 0 And 1");
    EXPECT_EQ(details.info.field(u"Discount")->validationText, u"You must enter a value with a percent sign.");
    EXPECT_EQ(details.fieldDescriptions.at(0), u"Same as Order ID in Orders table.");
    EXPECT_EQ(table(u"Customers"_s).description, u"Customers' names, addresses, and phone numbers.");
    EXPECT_EQ(table(u"Customers"_s).info.field(u"CompanyName")->size, 40);
    EXPECT_FALSE(table(u"Customers"_s).info.field(u"CustomerID")->isAutoIncrement());
    EXPECT_EQ(table(u"Umsätze"_s).info.fields.isEmpty(), false);
}

TEST_F(JetSchemaTest, Indexes)
{
    open(u"suite-current.mdb"_s);
    EXPECT_EQ(indexTexts(table(u"plan_entry"_s)),
              (QStringList{u" name: name"_s, u"F plans_rel: name"_s, u"PUR primary_key: name, entry_num"_s}));
    // Numbers of indexes that do not follow the order of their definitions.
    open(u"testIndexPropertiesV2000.mdb"_s);
    EXPECT_EQ(indexTexts(table(u"TableIgnoreNulls2"_s)),
              (QStringList{u"I DataIndex: data1, data2"_s, u"PUR PrimaryKey: row"_s}));
    EXPECT_EQ(indexTexts(table(u"TableUnique2_temp"_s)),
              (QStringList{u"PUR PrimaryKey: row"_s, u"U DataIndex: data1, data2"_s}));
}

TEST_F(JetSchemaTest, RelationsOfBothVersions)
{
    const QStringList expected{u"Table2Table1 Table2 Table1 1000 id=otherfk1"_s,
                               u"Table3Table1 Table3 Table1 100 id=otherfk2"_s};
    EXPECT_EQ(relationTexts(open(u"indexTestV1997.mdb"_s)), expected);
    EXPECT_EQ(relationTexts(open(u"indexTestV2003.mdb"_s)), expected);
    EXPECT_EQ(relationTexts(open(u"suite-old-1.mdb"_s)).filter(u"plans "_s),
              (QStringList{
                  u"plans_rel plans plan_entry 1100 site_code=site_code,comp=comp,outage=outage,plan_num=plan_num"_s}));
}

TEST_F(JetSchemaTest, WhatIsNotCarriedOverIsTold)
{
    open(u"nwind.mdb"_s);
    EXPECT_EQ(remarks().size(), 4);
    EXPECT_TRUE(remarks().at(0).startsWith(u"21 form(s): Categories, "_s)) << remarks().at(0).toStdString();
    EXPECT_EQ(remarks().at(3), u"3 module(s): Northwind Help Function, Startup, Utility Functions.");
    EXPECT_FALSE(m_reader->hasRemark(Remark::Kind::Lost));
}

TEST(JetFilesTest, KnownByTheirFirstBytes)
{
    ARVO_NEEDS_TESTDATA();
    EXPECT_TRUE(isJetFile(dataFile(u"nwind.mdb"_s)));
    EXPECT_TRUE(isJetFile(dataFile(u"suite-current.mdb"_s)));
    EXPECT_FALSE(isJetFile(dataFile(u"README.md"_s)));
    EXPECT_FALSE(isJetFile(dataFile(u"no such file.mdb"_s)));
}

TEST_F(JetSchemaTest, StoredQueriesOfEachKind)
{
    const QStringList files{u"queryTestV1997.mdb"_s, u"queryTestV2000.mdb"_s};
    for (const QString &file : files) {
        SCOPED_TRACE(file.toStdString());
        QMap<QString, QString> sql;
        for (const dao::QueryInfo &query : open(file).queries)
            sql.insert(query.name, query.sql);
        EXPECT_EQ(sql.size(), 9);
        EXPECT_EQ(sql.value(u"SelectQuery"_s),
                  u"SELECT DISTINCT Table1.*, Table2.col1, Table2.col2, Table3.col3\n"
                  "FROM (Table1 LEFT JOIN Table3 ON Table1.col1 = Table3.col1) INNER JOIN Table2 ON "
                  "(Table3.col1 = Table2.col1) AND (Table3.col1 = Table2.col2)\n"
                  "WHERE (((Table2.col2)=\"foo\" Or (Table2.col2) In (\"buzz\",\"bazz\")))\n"
                  "ORDER BY Table2.col1;");
        EXPECT_EQ(sql.value(u"DeleteQuery"_s),
                  u"DELETE Table1.col1, Table1.col2, Table1.col3\nFROM Table1\nWHERE (((Table1.col1)>\"blah\"));");
        EXPECT_EQ(sql.value(u"AppendQuery"_s),
                  u"INSERT INTO Table3 (col2, col2, col3)\nSELECT [Table1].[col2], [Table2].[col2], [Table2].[col3]\n"
                  "FROM Table3, Table1 INNER JOIN Table2 ON [Table1].[col1]=[Table2].[col1];");
        EXPECT_EQ(sql.value(u"UpdateQuery"_s),
                  u"PARAMETERS [User Name] Text;\nUPDATE Table1\n"
                  "SET Table1.col1 = \"foo\", Table1.col2 = [Table2].[col3], [Table2].[col1] = [User Name]\n"
                  "WHERE ((([Table2].[col1]) Is Not Null));");
        EXPECT_EQ(sql.value(u"MakeTableQuery"_s),
                  u"SELECT Max(Table2.col1) AS MaxOfcol1, Table2.col2, Table3.col2 INTO Table4\n"
                  "FROM (Table2 INNER JOIN Table1 ON Table2.col1 = Table1.col2) RIGHT JOIN Table3 ON "
                  "Table1.col2 = Table3.col3\nGROUP BY Table2.col2, Table3.col2\n"
                  "HAVING (((Max(Table2.col1))=\"buzz\") AND ((Table2.col2)<>\"blah\"));");
        EXPECT_EQ(sql.value(u"CrosstabQuery"_s),
                  u"TRANSFORM Count([Table2].[col2]) AS CountOfcol2\n"
                  "SELECT Table2_1.col1, [Table2].[col3], Avg(Table2_1.col2) AS AvgOfcol2\n"
                  "FROM (Table1 INNER JOIN Table2 ON [Table1].[col1]=[Table2].[col1]) INNER JOIN Table2 AS Table2_1 ON "
                  "[Table2].[col1]=Table2_1.col3\n"
                  "WHERE ((([Table1].[col1])>\"10\") And ((Table2_1.col1) Is Not Null) And "
                  "((Avg(Table2_1.col2))>\"10\"))\n"
                  "GROUP BY Table2_1.col1, [Table2].[col3]\nORDER BY [Table2].[col3]\nPIVOT [Table1].[col1];");
        EXPECT_EQ(sql.value(u"UnionQuery"_s),
                  u"Select Table1.col1, Table1.col2\nwhere Table1.col1 = \"foo\"\nUNION\n"
                  "Select Table2.col1, Table2.col2\nUNION ALL Select Table3.col1, Table3.col2\n"
                  "where Table3.col3 > \"blah\";");
        EXPECT_EQ(sql.value(u"PassthroughQuery"_s), u"ALTER TABLE Table4 DROP COLUMN col5;");
        EXPECT_EQ(sql.value(u"DataDefinitionQuery"_s), u"CREATE TABLE Table5 (col1 CHAR, col2 CHAR);");
        EXPECT_TRUE(remarks().first().startsWith(u"Query 'PassthroughQuery'"_s) || remarks().size() > 1);
    }
}

TEST_F(JetSchemaTest, StoredQueriesOfTheTrade)
{
    QMap<QString, QString> sql;
    for (const dao::QueryInfo &query : open(u"suite-current.mdb"_s).queries)
        sql.insert(query.name, query.sql);
    EXPECT_EQ(sql.size(), 11);
    EXPECT_EQ(sql.value(u"Calls of one code"_s),
              u"PARAMETERS [Defect code] Text, [Minimum volts] IEEESingle;\n"
              "SELECT outage, cal_num, oper_type, sec, row, col, volts, loc_land, loc_off\nFROM report\n"
              "WHERE (((report.defect)=[Defect code]) AND ((report.volts)>=[Minimum volts]))\nORDER BY volts DESC;");
    EXPECT_EQ(sql.value(u"Mark repaired tubes"_s),
              u"UPDATE tubes INNER JOIN repairs ON (tubes.sec = repairs.sec) AND (tubes.row = repairs.row) AND "
              "(tubes.col = repairs.col)\nSET tubes.is_marked = True\n"
              "WHERE (((repairs.date_completed) Is Not Null));");
    EXPECT_EQ(sql.value(u"Planned or repaired tubes"_s),
              u"SELECT sec, row, col\nFROM plan_entry\nWHERE name = 'R12_RPC_TS'\n"
              "UNION SELECT sec, row, col\nFROM repairs\nORDER BY sec, row, col;");
}

TEST_F(JetSchemaTest, StoredQueriesWithJoinsWithinJoins)
{
    QMap<QString, QString> sql;
    for (const dao::QueryInfo &query : open(u"nwind.mdb"_s).queries)
        sql.insert(query.name, query.sql);
    EXPECT_EQ(sql.size(), 22);
    EXPECT_TRUE(
        sql.value(u"Invoices"_s)
            .endsWith(
                u"\nFROM Shippers INNER JOIN (Products INNER JOIN ((Employees INNER JOIN (Customers INNER JOIN Orders "
                u"ON "
                "Customers.CustomerID = Orders.CustomerID) ON Employees.EmployeeID = Orders.EmployeeID) INNER JOIN "
                "[Order Details] ON Orders.OrderID = [Order Details].OrderID) ON Products.ProductID = "
                "[Order Details].ProductID) ON Shippers.ShipperID = Orders.ShipVia;"_s));
    EXPECT_EQ(sql.value(u"Ten Most Expensive Products"_s),
              u"SELECT DISTINCTROW TOP 10 Products.ProductName AS TenMostExpensiveProducts, Products.UnitPrice\n"
              "FROM Products\nORDER BY Products.UnitPrice DESC;");
    EXPECT_EQ(sql.value(u"Current Product List"_s),
              u"SELECT [Product List].ProductID, [Product List].ProductName\nFROM Products AS [Product List]\n"
              "WHERE ((([Product List].Discontinued)=No))\nORDER BY [Product List].ProductName;");
    // Written by a program that leaves out the kind of the statement.
    open(u"accessLike.mdb"_s);
    ASSERT_EQ(m_schema.queries.size(), 1);
    EXPECT_EQ(m_schema.queries.first().sql, u"SELECT Campo2\nFROM t_like2\nWHERE Campo2 LIKE \"d*#\";");
}

} // namespace
} // namespace jet::test

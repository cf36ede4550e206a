#include "TestDatabase.h"

#include <dao/Explain.h>
#include <dao/sql/bind/FunctionTable.h>
#include <dao/sql/Compiler.h>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace dao::sql;
using dao::DataType;
using testing::HasSubstr;
using testing::Not;

namespace {

class CompilerTest : public testing::Test
{
protected:
    CompilerTest()
    {
        m_database.run(
            u"CREATE TABLE report (recd_num COUNTER PRIMARY KEY, sec SHORT, row SHORT, col SHORT, volts SINGLE, outage TEXT(50), flag BOOLEAN)"_s);
        m_database.run(u"CREATE TABLE plans (name TEXT(50) PRIMARY KEY, create_time DATE)"_s);
        m_database.run(u"CREATE INDEX tube_id ON report (sec, row, col)"_s);
        m_database.run(u"CREATE INDEX outage ON report (outage)"_s);
    }

    const SelectPlan &select(const QString &sql)
    {
        m_compiled = compile(m_database, sql);
        return std::get<SelectPlan>(m_compiled.plan);
    }

    std::string queryPlan(const QString &sql)
    {
        return dao::queryPlan(m_database.database, sql).join(u'\n').toStdString();
    }

    int errorOf(const QString &sql)
    {
        try {
            compile(m_database, sql);
        } catch (const dao::DaoException &exception) {
            return exception.number();
        }
        return 0;
    }

    TestDatabase m_database;
    CompiledStatement m_compiled;
};

dao::FieldInfo field(DataType type, const QString &name = u"f"_s)
{
    dao::FieldInfo info;
    info.name = name;
    info.type = type;
    info.size = 50;
    return info;
}

std::string check(const QString &rule, DataType type = DataType::Integer)
{
    return ruleAsCheck(rule, field(type)).value_or(u"(not pure)"_s).toStdString();
}

} // namespace

TEST_F(CompilerTest, ARowOfAJoinIsFoundByTheKeysOfItsTables)
{
    const SelectPlan &plan = select(u"SELECT * FROM report LEFT JOIN plans ON report.outage = plans.name"_s);
    ASSERT_EQ(plan.sources.size(), 2);
    EXPECT_FALSE(plan.sources[0].nullable);
    EXPECT_TRUE(plan.sources[0].deletable);
    EXPECT_TRUE(plan.sources[1].nullable);
    EXPECT_FALSE(plan.sources[1].deletable);
    EXPECT_EQ(plan.columns[7].source, 1);
    const std::string found = queryPlan(plan.rowSql);
    EXPECT_THAT(found, HasSubstr("SEARCH _s1 USING INTEGER PRIMARY KEY"));
    EXPECT_THAT(found, HasSubstr("SEARCH _s2 USING INTEGER PRIMARY KEY"));
    EXPECT_THAT(queryPlan(plan.addedKeySql), HasSubstr("SEARCH _s1 USING INTEGER PRIMARY KEY"));
    EXPECT_THAT(queryPlan(plan.addedRowSql), HasSubstr("SEARCH _s1 USING INTEGER PRIMARY KEY"));
}

TEST_F(CompilerTest, ColumnsCarryWhatTheirFieldsKnow)
{
    const SelectPlan &plan =
        select(u"SELECT VOLTS, volts * 2 AS twice, flag, row > 5, outage & 'x', Count(*) AS n FROM report "
               "GROUP BY volts, flag, row, outage"_s);
    const auto info = [&plan](int i) { return plan.columns[i].info; };
    EXPECT_EQ(info(0).name, u"volts"_s);
    EXPECT_EQ(info(0).sourceTable, u"report"_s);
    EXPECT_EQ(info(0).type, DataType::Single);
    EXPECT_EQ(info(1).type, DataType::Single);
    EXPECT_TRUE(info(1).sourceTable.isEmpty());
    EXPECT_EQ(info(2).type, DataType::Boolean);
    EXPECT_EQ(info(3).type, DataType::Integer) << "a comparison is shown as -1 or 0";
    EXPECT_EQ(info(4).type, DataType::Text);
    EXPECT_EQ(info(5).type, DataType::Long);
}

TEST_F(CompilerTest, ParametersComeDeclaredFirstThenAsTheyAppear)
{
    select(
        u"PARAMETERS [z] DateTime, [y] Value;\nSELECT row FROM report WHERE row = [b] AND outage = [a] AND volts > [y] "
        "AND [Forms]![F]![c] = True AND [d] = [b] AND entry < [z]"_s);
    QStringList names;
    QList<DataType> types;
    for (const dao::sql::Parameter &parameter : m_compiled.parameters) {
        names.append(parameter.name);
        types.append(parameter.type);
    }
    EXPECT_EQ(names, (QStringList{u"z"_s, u"y"_s, u"b"_s, u"a"_s, u"Forms!F!c"_s, u"d"_s, u"entry"_s}));
    EXPECT_EQ(types[0], DataType::Date);
    EXPECT_EQ(types[2], DataType::Integer);
    EXPECT_EQ(types[3], DataType::Text);
    EXPECT_EQ(types[4], DataType::Boolean);
    EXPECT_EQ(types[6], DataType::Date);
    EXPECT_EQ(m_compiled.parameters[2].where.line, 2);
    EXPECT_EQ(m_compiled.parameters[2].where.column, 36);
}

TEST_F(CompilerTest, AMistypedColumnIsAParameterWithASuggestion)
{
    select(u"SELECT row FROM report WHERE volt > 2"_s);
    ASSERT_EQ(m_compiled.parameters.size(), 1);
    EXPECT_EQ(m_compiled.parameters[0].suggestion, u"volts"_s);
    // The named source is preferred, then the same field of another source.
    const std::pair<QString, QString> qualified[] = {{u"p.nmae"_s, u"p.name"_s},
                                                     {u"p.volts"_s, u"r.volts"_s},
                                                     {u"q.volts"_s, u"r.volts"_s},
                                                     {u"q.vlots"_s, u"volts"_s},
                                                     {u"p.sec"_s, u"r.sec"_s}};
    for (const auto &[written, meant] : qualified) {
        select(u"SELECT "_s + written + u" FROM report AS r, plans AS p"_s);
        EXPECT_EQ(m_compiled.parameters[0].suggestion, meant) << written.toStdString();
    }
}

TEST_F(CompilerTest, ASourceWithUnknownColumnsNeedsAReaderOfTheHeadings)
{
    m_database.addQuery(u"cross"_s, u"TRANSFORM Count(*) SELECT sec FROM report GROUP BY sec PIVOT row"_s);
    EXPECT_EQ(errorOf(u"SELECT * FROM [cross]"_s), 3143);
}

TEST_F(CompilerTest, ValuesThatFitAFieldAreNotConverted)
{
    const auto sqlOf = [this](const QString &sql) {
        return std::get<ActionPlan>(compile(m_database, sql).plan).steps.constFirst().sql.toStdString();
    };
    EXPECT_THAT(sqlOf(u"INSERT INTO report (row, volts, outage, flag) VALUES ('3', 0.1, 5, 7)"_s),
                HasSubstr("VALUES (3, 0.1000000014901161"));
    EXPECT_THAT(sqlOf(u"INSERT INTO report (row, volts, outage) SELECT row, volts, outage FROM report"_s),
                Not(HasSubstr("jet_")));
    EXPECT_THAT(sqlOf(u"INSERT INTO report (row, outage) VALUES ([a], [b])"_s), Not(HasSubstr("jet_")));
    EXPECT_THAT(sqlOf(u"UPDATE report SET row = recd_num"_s), HasSubstr("jet_to_integer("));
}

TEST_F(CompilerTest, EveryFunctionOfTheTableIsRegistered)
{
    for (const bound::FunctionInfo &function : bound::functionTable()) {
        QStringList arguments;
        for (int i = 0; i < std::max(function.minArguments(), 1) && function.minArguments() > 0; ++i)
            arguments.append(function.parameterAt(i) == u'b' ? u"True"_s : u"row"_s);
        if (function.kind == bound::FunctionKind::Domain)
            continue;
        if (QStringView(function.name) == u"Switch" || QStringView(function.name) == u"Choose")
            arguments = QStringList{u"1"_s, u"2"_s};
        const QString sql =
            u"SELECT "_s + QString::fromUtf16(function.name) + u'(' + arguments.join(u", ") + u") FROM report"_s;
        EXPECT_NO_THROW(queryPlan(select(sql).fullSql)) << qPrintable(sql);
    }
}

// ---- rules and defaults of fields --------------------------------------------------------------------------------

TEST(RulesTest, AComparisonTakesTheFieldAsItsLeftSide)
{
    EXPECT_EQ(check(u">= 0 and <= 999"_s), R"("f" IS NULL OR ("f" >= 0 AND "f" <= 999))");
    EXPECT_EQ(check(u"Between 1 And 0"_s), R"("f" IS NULL OR ("f" BETWEEN 0 AND 1))");
    EXPECT_EQ(check(u"\"M\" Or \"F\""_s, DataType::Text), R"("f" IS NULL OR ("f" = 'M' OR "f" = 'F'))");
    EXPECT_EQ(check(u"In (1, 2) Or Is Null"_s), R"("f" IS NULL OR ("f" IN (1, 2) OR "f" IS NULL))");
    EXPECT_EQ(check(u"Not In (1, 2)"_s), R"("f" IS NULL OR (NOT "f" IN (1, 2)))");
    EXPECT_EQ(check(u"<> -5"_s), R"("f" IS NULL OR ("f" <> -5))");
    EXPECT_EQ(check(u"[F] > 3 And f < 9"_s), R"("f" IS NULL OR ("f" > 3 AND "f" < 9))");
}

TEST(RulesTest, PatternsBecomeThoseOfTheInnerEngine)
{
    EXPECT_EQ(check(u"Like \"x*_\""_s, DataType::Text), R"("f" IS NULL OR ("f" LIKE 'x%\_' ESCAPE '\'))");
    EXPECT_EQ(check(u"Like \"[A-F]#*\""_s, DataType::Text), R"("f" IS NULL OR (lower("f") GLOB '[a-f][0-9]*'))");
}

TEST(RulesTest, OneThatNeedsAFunctionIsNoCheck)
{
    EXPECT_EQ(check(u"< Date()"_s, DataType::Date), "(not pure)");
    EXPECT_THAT(ruleWithFunctions(u"< Date()"_s, field(DataType::Date)).toStdString(), HasSubstr("jet_date()"));
}

TEST(RulesTest, WhatIsNoRuleIsRefused)
{
    const auto errorOf = [](const QString &rule) {
        try {
            ruleAsCheck(rule, field(DataType::Integer));
        } catch (const dao::DaoException &exception) {
            return exception.number();
        }
        return 0;
    };
    EXPECT_EQ(errorOf(u">= "_s), 3075);
    EXPECT_EQ(errorOf(u"other > 5"_s), 3070);
    EXPECT_EQ(errorOf(u"> 'abc'"_s), 3464);
}

TEST(RulesTest, ARuleOfATableSpeaksOfItsFields)
{
    dao::TableInfo table;
    table.name = u"t"_s;
    table.fields = {field(DataType::Integer, u"a"_s), field(DataType::Integer, u"b c"_s)};
    EXPECT_EQ(tableRuleAsCheck(u"a < [b c] * 2 Or [t].[a] Is Null"_s, table).value_or(QString()),
              uR"("a" < "b c" * 2 OR "a" IS NULL)"_s);
}

TEST(DefaultsTest, AreConvertedToTheirField)
{
    const auto sqlOf = [](const QString &text, DataType type) { return defaultExpression(text, field(type)).sql; };
    EXPECT_EQ(sqlOf(u"0"_s, DataType::Integer), u"0"_s);
    EXPECT_EQ(sqlOf(u"1"_s, DataType::Boolean), u"-1"_s);
    EXPECT_EQ(sqlOf(u"=No"_s, DataType::Boolean), u"0"_s);
    EXPECT_EQ(sqlOf(u"\"it's\""_s, DataType::Text), u"'it''s'"_s);
    EXPECT_EQ(sqlOf(u"NEW"_s, DataType::Text), u"'NEW'"_s);
    EXPECT_EQ(sqlOf(u"12 Main St."_s, DataType::Text), u"'12 Main St.'"_s);
    EXPECT_EQ(sqlOf(u"-5"_s, DataType::Single), u"-5.0"_s);
    EXPECT_EQ(sqlOf(QString(), DataType::Text), QString());
    EXPECT_TRUE(defaultExpression(u"0"_s, field(DataType::Single)).constant);
    EXPECT_FALSE(defaultExpression(u"Date()"_s, field(DataType::Date)).constant);
    EXPECT_EQ(sqlOf(u"=Date()"_s, DataType::Date), u"(SELECT jet_date())"_s);
}

#include <db/FieldDefinition.h>
#include <db/Schema.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using support::DatabaseTest;

namespace {

class SchemaTest : public DatabaseTest
{
protected:
    void expectFails(const QString &sql, int number)
    {
        try {
            execute(sql);
            ADD_FAILURE() << "accepted: " << sql.toStdString();
        } catch (const dao::DaoException &exception) {
            EXPECT_EQ(exception.number(), number) << sql.toStdString() << ": " << exception.description().toStdString();
        }
    }
};

TEST_F(SchemaTest, RelationsCascade)
{
    execute(u"INSERT INTO plans (name, create_time) VALUES ('A', Now())"_s);
    execute(u"INSERT INTO plan_entry (name, entry_num, row, col) VALUES ('A', 0, 1, 2)"_s);
    execute(u"INSERT INTO tube_sets (name) VALUES ('S')"_s);
    execute(u"INSERT INTO tube_set_entry (name, entry_num, row, col) VALUES ('S', 0, 1, 2)"_s);
    execute(u"UPDATE tube_sets SET name = 'T' WHERE name = 'S'"_s);
    EXPECT_EQ(scalar(u"SELECT name FROM tube_set_entry"_s).text(), u"T");
    execute(u"DELETE FROM plans WHERE name = 'A'"_s);
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM plan_entry"_s).integer(), 0);
    expectFails(u"INSERT INTO plan_entry (name, entry_num) VALUES ('none', 0)"_s, 3201);
}

TEST_F(SchemaTest, RequiredFieldsOfReportAreEnforced)
{
    const QMap<QString, QString> complete{
        {u"site_code"_s, u"'S'"_s},         {u"outage"_s, u"'R1'"_s},    {u"comp"_s, u"'SGA'"_s},
        {u"oper_type"_s, u"'PRI'"_s},       {u"analyst_id"_s, u"'A'"_s}, {u"oper_id"_s, u"'O'"_s},
        {u"entry_time"_s, u"#1/2/2020#"_s},
    };
    for (const QString &left : complete.keys()) {
        QMap<QString, QString> values = complete;
        values.remove(left);
        expectFails(u"INSERT INTO report ("_s + values.keys().join(u", ") + u") VALUES ("_s +
                        values.values().join(u", ") + u')',
                    3314);
    }
    const QString columns = complete.keys().join(u", ");
    const QString values = complete.values().join(u", ");
    expectFails(u"INSERT INTO report (pcnt, "_s + columns + u") VALUES (101, "_s + values + u')', 3317);
    expectFails(u"INSERT INTO report (row, "_s + columns + u") VALUES (1000, "_s + values + u')', 3317);
    EXPECT_EQ(scalar(u"SELECT COUNT(*) FROM report"_s).integer(), 0);

    execute(u"INSERT INTO report ("_s + columns + u") VALUES ("_s + values + u')');
    execute(u"INSERT INTO report ("_s + columns + u") VALUES ("_s + values + u')');
    EXPECT_EQ(scalar(u"SELECT leg FROM report"_s).integer(), 1);
    EXPECT_EQ(scalar(u"SELECT cal_num FROM report"_s).integer(), 1);
    EXPECT_EQ(scalar(u"SELECT MAX(recd_num) FROM report"_s).integer(), 2);
}

TEST_F(SchemaTest, LandmarkLegsAndRowsAreChecked)
{
    const auto insert = [](int leg) {
        return u"INSERT INTO landmarks (type, name, leg) VALUES ('SUPPORT', 'L%1', %1)"_s.arg(leg);
    };
    execute(insert(-1));
    execute(insert(2));
    expectFails(insert(3), 3317);
    EXPECT_EQ(scalar(u"SELECT last_row FROM landmarks"_s).integer(), 999);
}

TEST_F(SchemaTest, EmptyTextIsTakenOnlyWhereItIsAllowed)
{
    execute(u"INSERT INTO repairs (repair_type, type, material, vendor, loc_land, reason, comment, date_scheduled) "
            u"VALUES ('PLUG', '', '', '', '', '', '', Now())"_s);
    expectFails(u"INSERT INTO repairs (repair_type, date_scheduled) VALUES ('', Now())"_s, 3315);
    expectFails(u"INSERT INTO repairs (repair_type, heat1, date_scheduled) VALUES ('PLUG', '', Now())"_s, 3315);
    EXPECT_EQ(scalar(u"SELECT is_perm FROM repairs"_s), dao::Value::fromBoolean(true));
    execute(u"INSERT INTO tube_sets (name, [desc]) VALUES ('S', '')"_s);
    execute(u"INSERT INTO plans (name, create_time, [desc]) VALUES ('P', Now(), '')"_s);
}

TEST_F(SchemaTest, ATableThatFailsIsReportedAndDoesNotStopTheOthers)
{
    const QString otherPath = folder.path(u"other.mdb"_s);
    dao::Workspace workspace;
    dao::Database other(workspace);
    other.create(otherPath, {});
    dao::TableInfo inTheWay;
    inTheWay.name = u"plans"_s;
    db::createField(inTheWay, u"something"_s, dao::DataType::Long, 0, {}, {}, u"---");
    other.createTable(inTheWay);
    inTheWay.name = u"sec_alias"_s;
    other.createTable(inTheWay);

    db::createSchema(prompts, other);

    QList<int> numbers;
    for (const auto &entry : prompts.entries())
        numbers.append(entry.number);
    EXPECT_EQ(numbers, (QList<int>{1008, 1014, 1013}));
    EXPECT_TRUE(prompts.entries()[0].text.startsWith(u"Could not create 'plans' table.\n\n[3010] DAO."));
    EXPECT_TRUE(prompts.entries()[1].text.startsWith(u"Could not create 'sec_alias' alias table.\n\n"));
    EXPECT_TRUE(prompts.entries()[2].text.startsWith(u"Could not create relations.\n\n"));
    EXPECT_TRUE(other.hasTable(u"leg_alias"));
    EXPECT_TRUE(other.relations().isEmpty());
}

} // namespace

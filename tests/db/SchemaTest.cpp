#include <db/FieldDefinition.h>
#include <db/Messages.h>
#include <db/Schema.h>
#include <support/DatabaseFixture.h>

using namespace Qt::StringLiterals;
using support::DatabaseTest;

namespace {

// The schema as users' documents list it: name, type, size, default, rule, flags.
const char16_t *const kReport = uR"(
recd_num Long . . . R-A
sec Integer . 0 >=_0_and_<=_999 R--
row Integer . 0 >=_0_and_<=_999 R--
col Integer . 0 >=_0_and_<=_999 R--
chan Text 50 . . ---
meas_type Text 50 . . ---
volts Single . . . ---
phase Integer . . . ---
pcnt Integer . . >=_0_and_<=_100 ---
defect Text 50 . . ---
loc_land Text 50 . . ---
loc_off Single . . . ---
loc_pnt Long . . . ---
beg_test Text 50 . . ---
end_test Text 50 . . ---
site_code Text 50 . . R--
outage Text 50 . . R--
comp Text 50 . . R--
leg Integer . 1 . R--
cal_num Integer . 1 >=_0 R--
file_num Integer . 0 >=_0 R--
id Integer . 0 . ---
from_land Text 50 . . ---
from_off Single . . . ---
from_pnt Long . . . ---
to_land Text 50 . . ---
to_off Single . . . ---
to_pnt Long . . . ---
dig_volts Long . . . ---
loc_dist Single . . . ---
oper_type Text 50 . . R--
analyst_id Text 50 . . R--
oper_id Text 50 . . R--
util1 Text 50 . . ---
util2 Text 50 . . ---
plan Text * . . ---
probe_type Text 50 . . ---
probe_model Text 50 . . ---
probe_size Integer . . . ---
probe_sn Text 50 . . ---
entry_time Date . . . R--
file_name Text 255 . . ---
comment Memo . . . ---
)";

const char16_t *const kRepairs = uR"(
sec Integer . 0 >=_0_and_<=_999 R--
row Integer . 0 >=_0_and_<=_999 R--
col Integer . 0 >=_0_and_<=_999 R--
repair_type Text 50 . . R--
type Text 50 . . -Z-
material Text 50 . . -Z-
vendor Text 50 . . -Z-
loc_land Text 50 . . -Z-
loc_off Single . 0 . ---
date_scheduled Date . . . R--
date_completed Date . . . ---
is_perm Boolean . 1 . ---
heat1 Text 50 . . ---
heat2 Text 50 . . ---
length Single . 0 . ---
site_code Text 50 . . ---
comp Text 50 . . ---
outage Text 50 . . ---
reason Text 100 . . -Z-
comment Memo . . . -Z-
)";

const char16_t *const kLandmarks = uR"(
number Integer . 0 >=_0 R--
type Text 50 . . R--
name Text 50 . . R--
leg Integer . 0 >=_-1_and_<=_2 R--
pos Single . 0 . R--
angle Single . 0 . R--
first_row Integer . 0 >=_0 R--
last_row Integer . 999 >=_0 R--
land_set Long . 0 >=_0 R--
)";

const char16_t *const kPlans = uR"(
name Text 50 . . R--
probe_model Text 50 . . ---
beg_test Text 50 . . ---
end_test Text 50 . . ---
create_time Date . . . R--
desc Memo . . . -Z-
)";

const char16_t *const kPlanEntry = uR"(
name Text 50 . . R--
entry_num Long . 0 >=_0 R--
sec Integer . 0 >=_0_and_<=_999 R--
row Integer . 0 >=_0_and_<=_999 R--
col Integer . 0 >=_0_and_<=_999 R--
is_done Boolean . 0 . R--
)";

const char16_t *const kTubeSets = uR"(
name Text 50 . . R--
desc Memo . . . -Z-
)";

const char16_t *const kTubeSetEntry = uR"(
name Text 50 . . R--
entry_num Long . 0 >=_0 R--
sec Integer . 0 >=_0_and_<=_999 R--
row Integer . 0 >=_0_and_<=_999 R--
col Integer . 0 >=_0_and_<=_999 R--
color Long . 0 . R--
symbol Integer . 0 . R--
)";

const char16_t *const kTubes = uR"(
sec Integer . 0 >=_0_and_<=_999 R--
row Integer . 0 >=_0_and_<=_999 R--
col Integer . 0 >=_0_and_<=_999 R--
x Single . 0 . R--
y Single . 0 . R--
is_periph Boolean . 0 . R--
is_marked Boolean . 0 . ---
)";

QString orDot(const QString &text)
{
    return text.isEmpty() ? u"."_s : QString(text).replace(u' ', u'_');
}

/// A table of the file in the notation above.
QString described(const dao::TableInfo &table)
{
    QString lines = u"\n"_s;
    for (const dao::FieldInfo &field : table.fields) {
        const bool sized = field.type == dao::DataType::Text;
        // Its size was left to the engine.
        const bool engineSize = table.name == u"report" && field.name == u"plan";
        const QString size = engineSize ? u"*"_s : sized ? QString::number(field.size) : u"."_s;
        QString flags = u"---"_s;
        if (field.required)
            flags[0] = u'R';
        if (field.allowZeroLength)
            flags[1] = u'Z';
        if (field.isAutoIncrement())
            flags[2] = u'A';
        lines +=
            QStringList{
                field.name, db::daoTypeName(field.type), size, orDot(field.defaultValue), orDot(field.validationRule),
                flags}
                .join(u' ') +
            u'\n';
    }
    return lines;
}

/// Each index as "name P U field,field" ("P" primary, "U" unique, "-" neither).
QStringList describedIndexes(const dao::TableInfo &table)
{
    QStringList lines;
    for (const dao::IndexInfo &index : table.indexes) {
        QStringList fields;
        for (const dao::IndexField &field : index.fields)
            fields.append(field.name);
        lines.append(index.name + (index.primary ? u" P"_s : u" -"_s) + (index.unique ? u"U "_s : u"- "_s) +
                     fields.join(u','));
    }
    return lines;
}

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

TEST_F(SchemaTest, TablesAreThoseOfTheDocument)
{
    const std::pair<QString, const char16_t *> tables[] = {
        {u"report"_s, kReport},
        {u"repairs"_s, kRepairs},
        {u"landmarks"_s, kLandmarks},
        {u"plans"_s, kPlans},
        {u"plan_entry"_s, kPlanEntry},
        {u"tube_sets"_s, kTubeSets},
        {u"tube_set_entry"_s, kTubeSetEntry},
        {u"tubes"_s, kTubes},
    };
    for (const auto &[name, expected] : tables)
        EXPECT_EQ(described(database().table(name)), QString::fromUtf16(expected)) << name.toStdString();
    for (const QString &axis : {u"row"_s, u"col"_s, u"sec"_s, u"leg"_s}) {
        const dao::TableInfo &alias = database().table(QString(axis + u"_alias"));
        EXPECT_EQ(described(alias), QString(u"\nindex Integer . 0 . R--\n"_s + axis + u" Text 50 . . R--\n"));
        EXPECT_EQ(describedIndexes(alias), QStringList{u"primary_key PU index"_s});
    }
}

TEST_F(SchemaTest, HoldsTheTwelveTablesInOrderAndNothingElse)
{
    QStringList names;
    for (const QString &name : database().tableNames())
        if (!(database().table(name).attributes & (dao::SystemObject | dao::HiddenObject)))
            names.append(name);
    EXPECT_EQ(names, (QStringList{u"report"_s, u"repairs"_s, u"landmarks"_s, u"plans"_s, u"plan_entry"_s,
                                  u"tube_sets"_s, u"tube_set_entry"_s, u"tubes"_s, u"row_alias"_s, u"col_alias"_s,
                                  u"sec_alias"_s, u"leg_alias"_s}));
}

TEST_F(SchemaTest, IndexesAreThoseOfTheDocument)
{
    EXPECT_EQ(
        describedIndexes(database().table(u"report")),
        (QStringList{u"recd_num PU recd_num"_s, u"outage -- outage"_s, u"cal_num -- cal_num"_s, u"defect -- defect"_s,
                     u"volts -- volts"_s, u"chan -- chan"_s, u"loc_land -- loc_land"_s, u"phase -- phase"_s,
                     u"pcnt -- pcnt"_s, u"oper_type -- oper_type"_s, u"tube_id -- sec,row,col"_s}));
    EXPECT_EQ(describedIndexes(database().table(u"repairs")),
              (QStringList{u"tube_id -- row,col,sec"_s, u"repair -- repair_type"_s}));
    EXPECT_EQ(describedIndexes(database().table(u"landmarks")), QStringList{u"primary_key PU name,land_set"_s});
    EXPECT_EQ(describedIndexes(database().table(u"plans")), QStringList{u"primary_key PU name"_s});
    EXPECT_EQ(describedIndexes(database().table(u"tube_sets")), QStringList{u"primary_key PU name"_s});
    for (const QString &entries : {u"plan_entry"_s, u"tube_set_entry"_s})
        EXPECT_EQ(describedIndexes(database().table(entries)),
                  (QStringList{u"primary_key PU name,entry_num"_s, u"name -- name"_s}));
    EXPECT_EQ(describedIndexes(database().table(u"tubes")),
              (QStringList{u"primary_key PU sec,row,col"_s, u"marked -- is_marked"_s}));
}

TEST_F(SchemaTest, RelationsCascade)
{
    const QList<dao::RelationInfo> relations = database().relations();
    ASSERT_EQ(relations.size(), 2);
    const auto find = [&relations](QStringView name) {
        return *std::find_if(relations.begin(), relations.end(), [name](const auto &r) { return r.name == name; });
    };
    for (const auto &[name, table, foreign] : {std::tuple(u"plans_rel", u"plans", u"plan_entry"),
                                               std::tuple(u"tubes_rel", u"tube_sets", u"tube_set_entry")}) {
        const dao::RelationInfo relation = find(name);
        EXPECT_EQ(relation.table, QStringView(table));
        EXPECT_EQ(relation.foreignTable, QStringView(foreign));
        EXPECT_EQ(relation.attributes, 0x1100);
        ASSERT_EQ(relation.fields.size(), 1);
        EXPECT_EQ(relation.fields[0].field, u"name");
        EXPECT_EQ(relation.fields[0].foreignField, u"name");
    }

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

TEST(SchemaMessagesTest, HaveTheirNumbersAndTexts)
{
    const QMap<QString, int> numbers{{u"report"_s, 1005},         {u"repairs"_s, 1006},    {u"landmarks"_s, 1007},
                                     {u"plans"_s, 1008},          {u"plan_entry"_s, 1009}, {u"tube_sets"_s, 1010},
                                     {u"tube_set_entry"_s, 1011}, {u"tubes"_s, 1012}};
    ASSERT_EQ(db::tableSpecs().size(), size_t(numbers.size()));
    for (const db::TableSpec &spec : db::tableSpecs()) {
        const QString name = QString::fromUtf16(spec.name);
        EXPECT_EQ(spec.failure->number, numbers.value(name));
        EXPECT_EQ(QString::fromUtf16(spec.failure->text), u"Could not create '%1' table."_s.arg(name));
    }
}

} // namespace

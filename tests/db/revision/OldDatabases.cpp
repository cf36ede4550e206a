#include "OldDatabases.h"

#include <db/CreateDatabase.h>
#include <db/FieldDefinition.h>
#include <db/SqlText.h>
#include <QFile>
#include <tarnwick/Prompts.h>

using namespace Qt::StringLiterals;
using dao::DataType;
using dao::TableInfo;

namespace old {

namespace {

constexpr int kUnique = db::PrimaryIndex | db::UniqueIndex;
constexpr int kCascade = dao::UpdateCascade | dao::DeleteCascade;
const QStringList kNumbering{u"site_code"_s, u"comp"_s, u"outage"_s, u"plan_num"_s};

TableInfo without(TableInfo table, const QStringList &fields, const QStringList &indexes = {})
{
    table.fields.removeIf([&](const dao::FieldInfo &field) { return fields.contains(field.name); });
    table.indexes.removeIf([&](const dao::IndexInfo &index) { return indexes.contains(index.name); });
    return table;
}

void addNumbering(TableInfo &table)
{
    for (const QString &name : {u"site_code"_s, u"comp"_s, u"outage"_s})
        db::createField(table, name, DataType::Text, 50, {}, {}, u"R--");
    db::createField(table, u"plan_num"_s, DataType::Integer, 0, u"0"_s, {}, u"R--");
}

TableInfo displayFormat()
{
    TableInfo table;
    table.name = u"display_format"_s;
    db::createField(table, u"format_name"_s, DataType::Text, 50, {}, {}, u"R--");
    db::createField(table, u"width"_s, DataType::Integer, 0, u"0"_s, {}, u"---");
    return table;
}

TableInfo oldPlans(const TableInfo &current)
{
    TableInfo table;
    table.name = u"plans"_s;
    addNumbering(table);
    db::createField(table, u"file_name"_s, DataType::Text, 255, {}, {}, u"-Z-");
    table.fields += without(current, {u"name"_s}).fields;
    db::createIndex(table, u"plan_id"_s, kUnique, kNumbering);
    return table;
}

TableInfo oldPlanEntry(const TableInfo &current)
{
    TableInfo table;
    table.name = u"plan_entry"_s;
    addNumbering(table);
    table.fields += without(current, {u"name"_s}).fields;
    db::createField(table, u"is_analyzed"_s, DataType::Boolean, 0, u"0"_s, {}, u"---");
    db::createIndex(table, u"plan_id"_s, 0, kNumbering);
    db::createIndex(table, u"primary_key"_s, kUnique, kNumbering + QStringList{u"entry_num"_s});
    return table;
}

TableInfo oldLandmarks(const TableInfo &current)
{
    TableInfo table = without(current, {u"land_set"_s}, {u"primary_key"_s});
    db::createIndex(table, u"number"_s, kUnique, {u"number"_s});
    db::createIndex(table, u"name"_s, db::UniqueIndex, {u"name"_s});
    return table;
}

dao::RelationInfo oldPlansRelation()
{
    dao::RelationInfo relation{u"plan_relation"_s, u"plans"_s, u"plan_entry"_s, kCascade, {}};
    for (const QString &field : kNumbering)
        relation.fields.append({field, field});
    return relation;
}

TableInfo shaped(const TableInfo &current, int shapes)
{
    if (current.name == u"report" && (shapes & Report))
        return without(current, {u"util1"_s, u"util2"_s, u"plan"_s});
    if (current.name == u"landmarks" && (shapes & Landmarks))
        return oldLandmarks(current);
    if (current.name == u"tube_set_entry" && (shapes & TubeSets))
        return without(current, {u"entry_num"_s, u"color"_s, u"symbol"_s}, {u"primary_key"_s});
    if (current.name == u"plans" && (shapes & Plans))
        return oldPlans(current);
    if (current.name == u"plan_entry" && (shapes & Plans))
        return oldPlanEntry(current);
    if (current.name == u"tubes" && (shapes & Tubes))
        return without(current, {u"x"_s, u"y"_s});
    return current;
}

bool isLeftOut(const QString &table, int shapes)
{
    return (table == u"repairs" && (shapes & NoRepairs)) || (table.endsWith(u"_alias") && (shapes & NoAliases));
}

void createTables(dao::Database &database, dao::Database &current, int shapes)
{
    for (const QString &name : current.tableNames())
        if (!(current.table(name).attributes & dao::SystemObject) && !isLeftOut(name, shapes))
            database.createTable(shaped(current.table(name), shapes));
    if (shapes & DisplayFormat)
        database.createTable(displayFormat());
    for (const dao::RelationInfo &relation : current.relations())
        database.createRelation(relation.table == u"plans" && (shapes & Plans) ? oldPlansRelation() : relation);
}

void run(dao::Database &database, const QStringList &statements)
{
    for (const QString &statement : statements)
        db::executeSql(database, statement);
}

void fillReport(dao::Database &database, int shapes, qint64 rows)
{
    const QString utils = shapes & Report ? QString() : u", util1"_s;
    const QString values = shapes & Report ? QString() : u", 'u'"_s;
    for (int i = 0; i < 4; ++i)
        db::executeSql(
            database,
            u"INSERT INTO report (file_num, sec, row, col, volts, defect, loc_land, site_code, outage, comp, cal_num, "
            "oper_type, analyst_id, oper_id, entry_time, comment%1) VALUES (%2, 0, %3, 2, 1.5, 'DNT', 'TSH', 'S1', "
            "'R12', 'SGA', 7, 'PRI', 'A1001', 'A1002', #10/1/2000 14:08:05#, 'Entry %2'%4)"_s.arg(utils)
                .arg(i)
                .arg(i + 1)
                .arg(values));
    const QString fields =
        u"sec, row, col, volts, defect, loc_land, site_code, outage, comp, oper_type, analyst_id, oper_id, "
        "entry_time, comment"_s;
    qint64 have = 4;
    while (have < rows) {
        db::executeSql(
            database,
            u"INSERT INTO report (%1) SELECT %1 FROM report WHERE recd_num <= %2"_s.arg(fields).arg(rows - have));
        have = db::firstValue(database, u"SELECT COUNT(*) FROM report"_s).integer();
    }
}

void fillPlans(dao::Database &database, int shapes, qint64 entries)
{
    const bool isOld = shapes & Plans;
    const QString fields = isOld ? u"site_code, comp, outage, plan_num"_s : u"name"_s;
    const QStringList plans =
        isOld ? QStringList{u"'S1', 'SGA', 'R11', 2"_s, u"'S1', 'SGA', 'R12', 1"_s, u"'S1', 'SGA', 'R12', 3"_s}
              : QStringList{u"'S1_SGA_R11_2'"_s, u"'S1_SGA_R12_1'"_s, u"'S1_SGA_R12_3'"_s};
    for (const QString &plan : plans) {
        db::executeSql(database, u"INSERT INTO plans (%1, probe_model, create_time) "
                                 "VALUES (%2, 'PB-7', #8/30/2000 9:40:00#)"_s.arg(fields, plan));
        db::executeSql(database, u"INSERT INTO plan_entry (%1, entry_num, sec, row, col, is_done) "
                                 "VALUES (%2, 0, 0, 1, 2, False)"_s.arg(fields, plan));
    }
    const auto perPlan = std::max<qint64>(1, entries / plans.size());
    for (qint64 have = 1; have < perPlan;) {
        const qint64 more = std::min(have, perPlan - have);
        db::executeSql(database,
                       u"INSERT INTO plan_entry (%1, entry_num, sec, row, col, is_done) SELECT %1, entry_num + "
                       "%2, sec, row, col, True FROM plan_entry WHERE entry_num < %3"_s.arg(fields)
                           .arg(have)
                           .arg(more));
        have += more;
    }
}

void fillTubes(dao::Database &database, qint64 tubes)
{
    constexpr int kColumns = 900;
    for (qint64 i = 0; i < tubes; ++i)
        db::executeSql(database,
                       u"INSERT INTO tubes (sec, row, col, is_periph) VALUES (0, %1, %2, %3)"_s.arg(i / kColumns + 1)
                           .arg(i % kColumns + 1)
                           .arg(i % 2 ? u"True"_s : u"False"_s));
}

void fillSmallTables(dao::Database &database, int shapes)
{
    const QString entryFields =
        shapes & TubeSets ? u"name, sec, row, col"_s : u"name, sec, row, col, entry_num, color"_s;
    const QString entry = shapes & TubeSets ? QString() : u", 0, 255"_s;
    const QString setField = shapes & Landmarks ? QString() : u", land_set"_s;
    const QString set = shapes & Landmarks ? QString() : u", 1"_s;
    run(database,
        {u"INSERT INTO landmarks (number, type, name, leg, pos%1) VALUES (0, 'TE', 'TEH', 1, 0%2)"_s.arg(setField, set),
         u"INSERT INTO landmarks (number, type, name, leg, pos%1) VALUES (1, 'TS', 'TSH', 1, 20.5%2)"_s.arg(setField,
                                                                                                            set),
         u"INSERT INTO tube_sets (name) VALUES ('PL')"_s,
         u"INSERT INTO tube_set_entry (%1) VALUES ('PL', 0, 1, 2%2)"_s.arg(entryFields, entry)});
    if (!(shapes & NoRepairs))
        db::executeSql(database, u"INSERT INTO repairs (sec, row, col, repair_type, date_scheduled) "
                                 "VALUES (0, 1, 2, 'Plug', #4/18/2000#)"_s);
}

} // namespace

void makeDatabase(const QString &path, int shapes, const Sizes &sizes)
{
    const QString currentPath = path + u".current"_s;
    QFile::remove(currentPath);
    tarnwick::RecordingPrompts prompts;
    db::createDatabase(prompts, currentPath);
    dao::Workspace workspace;
    {
        dao::Workspace currentWorkspace;
        dao::Database current(currentWorkspace);
        current.open(currentPath, dao::OpenMode::ReadOnly);
        dao::Database database(workspace);
        db::createEmptyDatabase(database, path, db::kDefaultFormatYear);
        dao::Transaction transaction(workspace);
        createTables(database, current, shapes);
        fillReport(database, shapes, sizes.report);
        fillPlans(database, shapes, sizes.planEntries);
        fillTubes(database, sizes.tubes);
        fillSmallTables(database, shapes);
        transaction.commit();
    }
    QFile::remove(currentPath);
}

void makeForeignDatabase(const QString &path)
{
    dao::Workspace workspace;
    dao::Database database(workspace);
    db::createEmptyDatabase(database, path, db::kDefaultFormatYear);
    run(database,
        {u"CREATE TABLE IDENT (SITE TEXT(10), COMP TEXT(10))"_s,
         u"CREATE TABLE TUBEDATA (PRIMEKEY LONG NOT NULL, TUBEQUAD SHORT, TUBEROW SHORT, TUBECOL SHORT, TUBESTAT TEXT(4))"_s,
         u"CREATE TABLE EXAMDATA (PRIMEKEY LONG NOT NULL, TUBEQUAD SHORT, TUBEROW SHORT, TUBECOL SHORT, EXAIVOLT "
         u"DOUBLE, "
         "EXAIDEG LONG, EXAIDEPH LONG, EXAMCHAN TEXT(6), EXAMINDN TEXT(8), EXAMLEG TEXT(2), EXAMOUT TEXT(8), EXAMPERS "
         "TEXT(10), EXAMOPER TEXT(10), EXAILOC1 TEXT(8), EXAILOC3 SINGLE, EXAILOC4 SINGLE, EXAMREEL TEXT(8), EXAMTECH "
         "TEXT(8), EXAMDEXT TEXT(12), EXAMINSP TEXT(20), USRTEXT1 TEXT(40), USRTEXT2 TEXT(40), NOTEPTR MEMO, EXAMLOG "
         "DATETIME)"_s,
         u"CREATE TABLE REPRDATA (PRIMEKEY LONG NOT NULL, TUBEQUAD SHORT, TUBEROW SHORT, TUBECOL SHORT, REPRDESC "
         u"TEXT(30), "
         "PLUGTYPE TEXT(30), REPRISUD DATETIME, REPRCMPD DATETIME, HEAT1 TEXT(12), HEAT2 TEXT(12), FLAWLOC1 TEXT(8), "
         "FLAWLOC3 SINGLE, REPROUT TEXT(8), NOTEPTR MEMO)"_s});
}

void executeAll(const QString &path, const QStringList &statements)
{
    dao::Workspace workspace;
    dao::Database database(workspace);
    database.open(path);
    run(database, statements);
}

} // namespace old

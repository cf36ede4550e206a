#include "TableSteps.h"

#include "Messages.h"

#include <db/FieldDefinition.h>
#include <db/Schema.h>
#include <db/SqlText.h>

namespace db {

using namespace Qt::StringLiterals;
using dao::DataType;

namespace {

bool hasField(const dao::Database &database, QStringView table, QStringView field)
{
    return database.table(table).field(field) != nullptr;
}

bool hasIndex(const dao::Database &database, QStringView table, QStringView index)
{
    return database.table(table).index(index) != nullptr;
}

void addMissing(dao::Database &database, const QString &table, const QList<dao::FieldInfo> &fields)
{
    for (const dao::FieldInfo &field : fields)
        if (!hasField(database, table, field.name))
            database.addField(table, field);
}

void deleteIndexIfThere(dao::Database &database, QStringView table, QStringView index)
{
    if (hasIndex(database, table, index))
        database.deleteIndex(table, index);
}

bool hasLandmarkWithoutSet(dao::Database &database)
{
    return firstValue(database, u"SELECT COUNT(*) FROM landmarks WHERE land_set IS NULL"_s).integer() != 0;
}

bool isOldLandmarks(dao::Database &database)
{
    return hasIndex(database, u"landmarks", u"number") || hasIndex(database, u"landmarks", u"name") ||
           !hasIndex(database, u"landmarks", u"primary_key") || !hasField(database, u"landmarks", u"land_set") ||
           hasLandmarkWithoutSet(database);
}

} // namespace

void deleteDisplayFormat(ConversionPass &pass)
{
    dao::Database &database = pass.database();
    if (!database.hasTable(u"display_format") || !pass.request(messages::kStepDisplayFormat))
        return;
    pass.change([&] { database.deleteTable(u"display_format"); });
}

void createRepairs(ConversionPass &pass)
{
    if (pass.database().hasTable(u"repairs") || !pass.request(messages::kStepRepairs))
        return;
    pass.change([&] {
        if (!createTable(pass.prompts(), pass.database(), tableSpec(u"repairs")))
            pass.markFailed(messages::kStepRepairs);
    });
}

void convertReport(ConversionPass &pass)
{
    dao::Database &database = pass.database();
    const bool isNew = hasField(database, u"report", u"util1") && hasField(database, u"report", u"plan");
    if (isNew || !pass.request(messages::kStepReport))
        return;
    constexpr int kUtilSize = 50;
    constexpr int kPlanSize = 255;
    pass.change([&] {
        addMissing(database, u"report"_s,
                   {convertedField(u"util1"_s, DataType::Text, {}, 0, kUtilSize),
                    convertedField(u"util2"_s, DataType::Text, {}, 0, kUtilSize),
                    convertedField(u"plan"_s, DataType::Text, {}, 0, kPlanSize)});
    });
}

void convertLandmarks(ConversionPass &pass)
{
    dao::Database &database = pass.database();
    if (!isOldLandmarks(database) || !pass.request(messages::kStepLandmarks))
        return;
    pass.change([&] {
        deleteIndexIfThere(database, u"landmarks", u"number");
        deleteIndexIfThere(database, u"landmarks", u"name");
        addMissing(database, u"landmarks"_s, {convertedField(u"land_set"_s, DataType::Long, u"0"_s)});
        executeSql(database, u"UPDATE landmarks SET land_set = 0 WHERE land_set IS NULL"_s);
        if (!hasIndex(database, u"landmarks", u"primary_key"))
            database.createIndex(u"landmarks",
                                 newIndex(u"primary_key"_s, PrimaryIndex | UniqueIndex, {u"name"_s, u"land_set"_s}));
    });
}

void convertTubeSetEntry(ConversionPass &pass)
{
    dao::Database &database = pass.database();
    if (hasField(database, u"tube_set_entry", u"entry_num") || !pass.request(messages::kStepTubeSets))
        return;
    pass.change([&] {
        addMissing(database, u"tube_set_entry"_s,
                   {convertedField(u"entry_num"_s, DataType::Long, u"0"_s),
                    convertedField(u"color"_s, DataType::Long, u"0"_s),
                    convertedField(u"symbol"_s, DataType::Integer, u"0"_s)});
    });
}

void convertTubes(ConversionPass &pass)
{
    dao::Database &database = pass.database();
    if (hasField(database, u"tubes", u"x") || !pass.request(messages::kStepTubes))
        return;
    pass.change([&] {
        addMissing(
            database, u"tubes"_s,
            {convertedField(u"x"_s, DataType::Single, u"0"_s), convertedField(u"y"_s, DataType::Single, u"0"_s)});
    });
}

} // namespace db

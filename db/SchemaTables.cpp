#include "FieldDefinition.h"
#include "Messages.h"
#include "Schema.h"

#include <stdexcept>

namespace db {

namespace {

using enum dao::DataType;

constexpr int kUniqueKey = PrimaryIndex | UniqueIndex;
constexpr int kPlain = 0;

constexpr const char16_t *kAddressRule = u">= 0 and <= 999";
constexpr FieldSpec kSec{u"sec", Integer, 0, u"0", kAddressRule, u"R--"};
constexpr FieldSpec kRow{u"row", Integer, 0, u"0", kAddressRule, u"R--"};
constexpr FieldSpec kCol{u"col", Integer, 0, u"0", kAddressRule, u"R--"};

constexpr FieldSpec kReportFields[] = {
    {u"recd_num", Long, 0, u"", u"", u"R-A"},
    kSec,
    kRow,
    kCol,
    {u"chan", Text, 50, u"", u"", u"---"},
    {u"meas_type", Text, 50, u"", u"", u"---"},
    {u"volts", Single, 0, u"", u"", u"---"},
    {u"phase", Integer, 0, u"", u"", u"---"},
    {u"pcnt", Integer, 0, u"", u">= 0 and <= 100", u"---"},
    {u"defect", Text, 50, u"", u"", u"---"},
    {u"loc_land", Text, 50, u"", u"", u"---"},
    {u"loc_off", Single, 0, u"", u"", u"---"},
    {u"loc_pnt", Long, 0, u"", u"", u"---"},
    {u"beg_test", Text, 50, u"", u"", u"---"},
    {u"end_test", Text, 50, u"", u"", u"---"},
    {u"site_code", Text, 50, u"", u"", u"R--"},
    {u"outage", Text, 50, u"", u"", u"R--"},
    {u"comp", Text, 50, u"", u"", u"R--"},
    {u"leg", Integer, 0, u"1", u"", u"R--"},
    {u"cal_num", Integer, 0, u"1", u">= 0", u"R--"},
    {u"file_num", Integer, 0, u"0", u">= 0", u"R--"},
    {u"id", Integer, 0, u"0", u"", u"---"},
    {u"from_land", Text, 50, u"", u"", u"---"},
    {u"from_off", Single, 0, u"", u"", u"---"},
    {u"from_pnt", Long, 0, u"", u"", u"---"},
    {u"to_land", Text, 50, u"", u"", u"---"},
    {u"to_off", Single, 0, u"", u"", u"---"},
    {u"to_pnt", Long, 0, u"", u"", u"---"},
    {u"dig_volts", Long, 0, u"", u"", u"---"},
    {u"loc_dist", Single, 0, u"", u"", u"---"},
    {u"oper_type", Text, 50, u"", u"", u"R--"},
    {u"analyst_id", Text, 50, u"", u"", u"R--"},
    {u"oper_id", Text, 50, u"", u"", u"R--"},
    {u"util1", Text, 50, u"", u"", u"---"},
    {u"util2", Text, 50, u"", u"", u"---"},
    {u"plan", Text, 0, u"", u"", u"---"},
    {u"probe_type", Text, 50, u"", u"", u"---"},
    {u"probe_model", Text, 50, u"", u"", u"---"},
    {u"probe_size", Integer, 0, u"", u"", u"---"},
    {u"probe_sn", Text, 50, u"", u"", u"---"},
    {u"entry_time", Date, 0, u"", u"", u"R--"},
    {u"file_name", Text, 255, u"", u"", u"---"},
    {u"comment", Memo, 0, u"", u"", u"---"},
};

// Selectivities of a component with about 3,400 tubes and several outages: cal number and tube are the most selective,
// half of the entries share an operation type, and nearly all share a section.
constexpr qint64 kReportRows = 1'000'000;
constexpr IndexSpec kReportIndexes[] = {
    {u"recd_num", kUniqueKey, {u"recd_num"}, {1}},
    {u"outage", kPlain, {u"outage"}, {100'000}},
    {u"cal_num", kPlain, {u"cal_num"}, {2'000}},
    {u"defect", kPlain, {u"defect"}, {40'000}},
    {u"volts", kPlain, {u"volts"}, {900}},
    {u"chan", kPlain, {u"chan"}, {60'000}},
    {u"loc_land", kPlain, {u"loc_land"}, {30'000}},
    {u"phase", kPlain, {u"phase"}, {3'000}},
    {u"pcnt", kPlain, {u"pcnt"}, {10'000}},
    {u"oper_type", kPlain, {u"oper_type"}, {330'000}},
    {u"tube_id", kPlain, {u"sec", u"row", u"col"}, {1'000'000, 21'000, 300}},
};

constexpr FieldSpec kRepairsFields[] = {
    kSec,
    kRow,
    kCol,
    {u"repair_type", Text, 50, u"", u"", u"R--"},
    {u"type", Text, 50, u"", u"", u"-Z-"},
    {u"material", Text, 50, u"", u"", u"-Z-"},
    {u"vendor", Text, 50, u"", u"", u"-Z-"},
    {u"loc_land", Text, 50, u"", u"", u"-Z-"},
    {u"loc_off", Single, 0, u"0", u"", u"---"},
    {u"date_scheduled", Date, 0, u"", u"", u"R--"},
    {u"date_completed", Date, 0, u"", u"", u"---"},
    {u"is_perm", Boolean, 0, u"1", u"", u"---"},
    {u"heat1", Text, 50, u"", u"", u"---"},
    {u"heat2", Text, 50, u"", u"", u"---"},
    {u"length", Single, 0, u"0", u"", u"---"},
    {u"site_code", Text, 50, u"", u"", u"---"},
    {u"comp", Text, 50, u"", u"", u"---"},
    {u"outage", Text, 50, u"", u"", u"---"},
    {u"reason", Text, 100, u"", u"", u"-Z-"},
    {u"comment", Memo, 0, u"", u"", u"-Z-"},
};

// The order is row, column, section, unlike every other tube index.
constexpr IndexSpec kRepairsIndexes[] = {
    {u"tube_id", kPlain, {u"row", u"col", u"sec"}, {25, 2, 2}},
    {u"repair", kPlain, {u"repair_type"}, {500}},
};

constexpr FieldSpec kLandmarksFields[] = {
    {u"number", Integer, 0, u"0", u">= 0", u"R--"},
    {u"type", Text, 50, u"", u"", u"R--"},
    {u"name", Text, 50, u"", u"", u"R--"},
    {u"leg", Integer, 0, u"0", u">= -1 and <= 2", u"R--"},
    {u"pos", Single, 0, u"0", u"", u"R--"},
    {u"angle", Single, 0, u"0", u"", u"R--"},
    {u"first_row", Integer, 0, u"0", u">= 0", u"R--"},
    {u"last_row", Integer, 0, u"999", u">= 0", u"R--"},
    {u"land_set", Long, 0, u"0", u">= 0", u"R--"},
};
constexpr IndexSpec kLandmarksIndexes[] = {{u"primary_key", kUniqueKey, {u"name", u"land_set"}, {}}};

constexpr FieldSpec kPlansFields[] = {
    {u"name", Text, 50, u"", u"", u"R--"},       {u"probe_model", Text, 50, u"", u"", u"---"},
    {u"beg_test", Text, 50, u"", u"", u"---"},   {u"end_test", Text, 50, u"", u"", u"---"},
    {u"create_time", Date, 0, u"", u"", u"R--"}, {u"desc", Memo, 0, u"", u"", u"-Z-"},
};
constexpr IndexSpec kNameKey[] = {{u"primary_key", kUniqueKey, {u"name"}, {1}}};

constexpr FieldSpec kPlanEntryFields[] = {
    {u"name", Text, 50, u"", u"", u"R--"},       {u"entry_num", Long, 0, u"0", u">= 0", u"R--"}, kSec, kRow, kCol,
    {u"is_done", Boolean, 0, u"0", u"", u"R--"},
};
constexpr IndexSpec kPlanEntryIndexes[] = {
    {u"primary_key", kUniqueKey, {u"name", u"entry_num"}, {1'000, 1}},
    {u"name", kPlain, {u"name"}, {1'000}},
};

constexpr FieldSpec kTubeSetsFields[] = {
    {u"name", Text, 50, u"", u"", u"R--"},
    {u"desc", Memo, 0, u"", u"", u"-Z-"},
};

constexpr FieldSpec kTubeSetEntryFields[] = {
    {u"name", Text, 50, u"", u"", u"R--"},  {u"entry_num", Long, 0, u"0", u">= 0", u"R--"}, kSec, kRow, kCol,
    {u"color", Long, 0, u"0", u"", u"R--"}, {u"symbol", Integer, 0, u"0", u"", u"R--"},
};

constexpr FieldSpec kTubesFields[] = {
    kSec,
    kRow,
    kCol,
    {u"x", Single, 0, u"0", u"", u"R--"},
    {u"y", Single, 0, u"0", u"", u"R--"},
    {u"is_periph", Boolean, 0, u"0", u"", u"R--"},
    {u"is_marked", Boolean, 0, u"0", u"", u"---"},
};
constexpr IndexSpec kTubesIndexes[] = {
    {u"primary_key", kUniqueKey, {u"sec", u"row", u"col"}, {3'400, 72, 1}},
    {u"marked", kPlain, {u"is_marked"}, {1'700}},
};

constexpr TableSpec kTables[] = {
    {u"report", kReportFields, kReportIndexes, &messages::kCreateReport, kReportRows},
    {u"repairs", kRepairsFields, kRepairsIndexes, &messages::kCreateRepairs, 1'000},
    {u"landmarks", kLandmarksFields, kLandmarksIndexes, &messages::kCreateLandmarks, 0},
    {u"plans", kPlansFields, kNameKey, &messages::kCreatePlans, 50},
    {u"plan_entry", kPlanEntryFields, kPlanEntryIndexes, &messages::kCreatePlanEntry, 50'000},
    {u"tube_sets", kTubeSetsFields, kNameKey, &messages::kCreateTubeSets, 50},
    {u"tube_set_entry", kTubeSetEntryFields, kPlanEntryIndexes, &messages::kCreateTubeSetEntry, 50'000},
    {u"tubes", kTubesFields, kTubesIndexes, &messages::kCreateTubes, 3'400},
};

constexpr AliasSpec kAliases[] = {
    {u"row_alias", u"row"},
    {u"col_alias", u"col"},
    {u"sec_alias", u"sec"},
    {u"leg_alias", u"leg"},
};

constexpr int kCascade = dao::UpdateCascade | dao::DeleteCascade;
constexpr RelationSpec kRelations[] = {
    {u"plans_rel", u"plans", u"plan_entry", u"name", kCascade},
    {u"tubes_rel", u"tube_sets", u"tube_set_entry", u"name", kCascade},
};

} // namespace

QStringList IndexSpec::fieldNames() const
{
    QStringList names;
    for (const char16_t *field : fields)
        if (field)
            names.append(QString::fromUtf16(field));
    return names;
}

std::span<const TableSpec> tableSpecs()
{
    return kTables;
}

const TableSpec &tableSpec(QStringView name)
{
    for (const TableSpec &spec : kTables)
        if (name.compare(QStringView(spec.name), Qt::CaseInsensitive) == 0)
            return spec;
    throw std::logic_error("not a table of the schema");
}

std::span<const AliasSpec> aliasSpecs()
{
    return kAliases;
}

std::span<const RelationSpec> relationSpecs()
{
    return kRelations;
}

} // namespace db

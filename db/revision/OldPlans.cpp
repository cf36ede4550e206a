#include "OldPlans.h"

#include "Messages.h"

#include <db/FieldDefinition.h>
#include <db/Schema.h>

namespace db {

using namespace Qt::StringLiterals;

namespace {

constexpr int kNameSize = 50;
constexpr int kUnique = PrimaryIndex | UniqueIndex;

const QStringList kNumbering{u"site_code"_s, u"comp"_s, u"outage"_s, u"plan_num"_s};

/// Name made of the old numbering: "%S_%S_%S_%d". A missing text counts as empty, a missing number as 0.
const QString kNameExpression =
    u"[site_code] & '_' & [comp] & '_' & [outage] & '_' & IIf([plan_num] IS NULL, 0, [plan_num])"_s;

/// Fields and indexes removed from and added to one of the two tables.
struct Change
{
    QString table;
    QStringList oldIndexes;
    QList<dao::IndexInfo> newIndexes;
    QString unusedField;
};

void requireFields(const dao::TableInfo &table, const QStringList &names)
{
    constexpr int kItemNotFound = 3265;
    for (const QString &name : names)
        if (!table.field(name))
            throw dao::DaoException(kItemNotFound, u"DAO.Fields"_s,
                                    u"Item not found in this collection: '%1'."_s.arg(name));
}

void convertTable(dao::Database &database, const Change &change)
{
    dao::TableInfo shape = database.table(change.table);
    requireFields(shape, kNumbering);
    if (!shape.field(u"name"))
        addField(shape, u"name"_s, dao::DataType::Text, u""_s, 0, kNameSize);
    const auto isUnused = [&](const dao::FieldInfo &field) {
        return field.name.compare(change.unusedField, Qt::CaseInsensitive) == 0 ||
               kNumbering.contains(field.name, Qt::CaseInsensitive);
    };
    // An index over a removed field must be removed too. The index of the old relation, for example, can have any name.
    const auto isOld = [&](const dao::IndexInfo &index) {
        return change.oldIndexes.contains(index.name, Qt::CaseInsensitive) ||
               std::any_of(index.fields.begin(), index.fields.end(),
                           [&](const dao::IndexField &field) { return isUnused(*shape.field(field.name)); });
    };
    shape.indexes.removeIf(isOld);
    shape.fields.removeIf(isUnused);
    for (const dao::IndexInfo &index : change.newIndexes)
        if (!shape.index(index.name))
            shape.indexes.append(index);
    database.alterTable(change.table, shape, {{u"name"_s, kNameExpression}});
}

} // namespace

void convertPlans(ConversionPass &pass)
{
    dao::Database &database = pass.database();
    if (database.table(u"plans").field(u"name") || !pass.request(messages::kStepPlans))
        return;
    pass.change([&] {
        for (const dao::RelationInfo &relation : database.relations())
            if (relation.table.compare(u"plans", Qt::CaseInsensitive) == 0)
                database.deleteRelation(relation.name);
        convertTable(database,
                     {u"plans"_s, {u"plan_id"_s}, {newIndex(u"name"_s, kUnique, {u"name"_s})}, u"file_name"_s});
        convertTable(database, {u"plan_entry"_s,
                                {u"plan_id"_s, u"primary_key"_s},
                                {newIndex(u"name"_s, 0, {u"name"_s}),
                                 newIndex(u"primary"_s, kUnique, {u"name"_s, u"entry_num"_s})},
                                u"is_analyzed"_s});
        createRelation(database, u"plans_rel");
    });
}

} // namespace db

#include "DefinitionCheck.h"

#include "EngineRules.h"
#include "ErrorTranslation.h"
#include "SystemTables.h"
#include "TableDefinition.h"

#include <dao/values/Names.h>
#include <dao/values/TypeSize.h>

using namespace Qt::StringLiterals;

namespace dao::store {

namespace {

constexpr int kLargestText = 255;

} // namespace

QSet<QString> fieldNames(const IndexInfo &index)
{
    QSet<QString> names;
    for (const IndexField &field : index.fields)
        names.insert(folded(field.name));
    return names;
}

// The fields may be in any order.
bool hasUniqueIndex(const TableInfo &table, const RelationInfo &relation)
{
    return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const IndexInfo &index) {
        return index.unique && fieldNames(index) == keyFieldNames(relation);
    });
}

QSet<QString> keyFieldNames(const RelationInfo &relation)
{
    QSet<QString> names;
    for (const RelationField &field : relation.fields)
        names.insert(folded(field.field));
    return names;
}

void DefinitionCheck::fail(int number, const QStringList &arguments) const
{
    throw engineError(number, m_source, arguments);
}

// Fields, indexes and relations can have names that are reserved for tables.
void DefinitionCheck::plainName(const QString &name) const
{
    if (!isValidName(name))
        fail(error::InvalidName, {name});
}

void DefinitionCheck::name(const QString &name) const
{
    plainName(name);
    if (isSystemTableName(name))
        fail(error::InvalidName, {name});
}

const TableInfo &DefinitionCheck::storedTable(const QString &name) const
{
    const StoredTable *table = m_catalog.findStored(name);
    if (!table)
        fail(error::ItemNotFound);
    return table->info;
}

// Sets size and attributes from the type, so that definitions from all sources (DDL, DAO, conversion) are equal.
FieldInfo DefinitionCheck::field(const FieldInfo &given) const
{
    FieldInfo field = given;
    plainName(field.name);
    switch (field.type) {
    case DataType::Boolean:
    case DataType::Byte:
    case DataType::Integer:
    case DataType::Long:
    case DataType::Currency:
    case DataType::Single:
    case DataType::Double:
    case DataType::Date:
    case DataType::Binary:
    case DataType::Text:
    case DataType::LongBinary:
    case DataType::Memo:
    case DataType::Guid:
    case DataType::Decimal:
        break;
    default:
        fail(error::InvalidFieldType);
    }
    if (field.isAutoIncrement() && field.type != DataType::Long)
        fail(error::InvalidFieldType);
    if (field.type == DataType::Text && field.size > kLargestText)
        fail(error::InvalidArgument);
    field.size = sizeOf(field.type, field.size);
    const bool variable =
        isTextType(field.type) || field.type == DataType::Binary || field.type == DataType::LongBinary;
    // DAO reports text and binary fields as variable, all others as fixed.
    field.attributes |= Updatable | (variable ? VariableField : FixedField);
    field.allowZeroLength = field.allowZeroLength && isTextType(field.type);
    field.sourceTable.clear();
    field.sourceField.clear();
    // Invalid rules and defaults are refused here and not when the first row is written.
    if (!field.validationRule.trimmed().isEmpty())
        needsEngine(field);
    constantDefault(field);
    return field;
}

// Field names get the spelling of the table.
IndexInfo DefinitionCheck::index(const TableInfo &table, const IndexInfo &given) const
{
    IndexInfo index = given;
    plainName(index.name);
    if (index.fields.isEmpty())
        fail(error::NoFieldDefined);
    for (IndexField &field : index.fields) {
        const FieldInfo *info = table.field(field.name);
        if (!info)
            fail(error::InvalidIndexField, {field.name});
        field.name = info->name;
    }
    index.unique = index.unique || index.primary;
    return index;
}

TableInfo DefinitionCheck::table(const TableInfo &given) const
{
    name(given.name);
    if (m_catalog.findTable(given.name))
        fail(error::TableExists, {given.name});
    if (m_catalog.findQuery(given.name))
        fail(error::ObjectExists, {given.name});
    return shape(given);
}

TableInfo DefinitionCheck::shape(const TableInfo &given) const
{
    TableInfo table;
    table.name = given.name;
    table.attributes = given.attributes;
    table.validationRule = given.validationRule;
    table.validationText = given.validationText;
    if (given.fields.isEmpty())
        fail(error::NoFieldDefined);
    bool autonumber = false;
    for (const FieldInfo &wanted : given.fields) {
        if (table.field(wanted.name))
            fail(error::FieldDefinedTwice);
        table.fields.append(field(wanted));
        if (autonumber && wanted.isAutoIncrement())
            fail(error::InvalidFieldType);
        autonumber = autonumber || wanted.isAutoIncrement();
    }
    for (const IndexInfo &wanted : given.indexes) {
        if (table.index(wanted.name))
            fail(error::IndexNameExists, {given.name, wanted.name});
        table.indexes.append(index(table, wanted));
    }
    if (std::count_if(table.indexes.begin(), table.indexes.end(), [](const IndexInfo &each) { return each.primary; }) >
        1)
        fail(error::PrimaryKeyExists);
    table.keyColumn = keyColumnFor(table);
    // Fields named rowid, oid and _rowid_ hide all names of the row key.
    if (table.keyColumn.isEmpty())
        fail(error::InvalidName, {u"rowid"_s});
    return table;
}

RelationInfo DefinitionCheck::relation(const RelationInfo &given) const
{
    RelationInfo relation = given;
    plainName(relation.name);
    const TableInfo &table = storedTable(relation.table);
    const TableInfo &foreignTable = storedTable(relation.foreignTable);
    relation.table = table.name;
    relation.foreignTable = foreignTable.name;
    if (m_catalog.findRelation(relation.name))
        fail(error::RelationExists, {relation.name});
    if (relation.fields.isEmpty())
        fail(error::RelationWithoutFields);
    for (RelationField &field : relation.fields) {
        const FieldInfo *key = table.field(field.field);
        const FieldInfo *foreign = foreignTable.field(field.foreignField);
        if (!key || !foreign)
            fail(error::InvalidIndexField, {key ? field.foreignField : field.field});
        // SQLite compares a number and a text as unequal, so keys of different types would never match.
        if (key->type != foreign->type)
            fail(error::RelationTypes);
        field = {key->name, foreign->name};
    }
    if (!hasUniqueIndex(table, relation) && !(relation.attributes & DontEnforce))
        fail(error::NoUniqueIndexForRelation);
    return relation;
}

} // namespace dao::store

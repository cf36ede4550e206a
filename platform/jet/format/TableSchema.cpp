#include "TableSchema.h"

using namespace Qt::StringLiterals;

namespace jet::format {
namespace {

using dao::DataType;

enum IndexFlag { kUnique = 1, kIgnoreNulls = 2, kRequired = 8 };

DataType dataType(ColumnType type)
{
    return type == ColumnType::Decimal ? DataType::Decimal : DataType(int(type));
}

// Size in characters for text, in bytes for other types; long values have no size.
int fieldSize(const ColumnDefinition &column, bool jet4)
{
    switch (column.type) {
    case ColumnType::Boolean:
        return 1;
    case ColumnType::Text:
        return jet4 ? column.size / 2 : column.size;
    case ColumnType::Memo:
    case ColumnType::LongBinary:
        return 0;
    case ColumnType::Decimal:
        return 16;
    default:
        return column.size;
    }
}

dao::FieldInfo fieldInfo(const ColumnDefinition &column, const Properties &properties, bool jet4)
{
    dao::FieldInfo field;
    field.name = column.name;
    field.type = dataType(column.type);
    field.size = fieldSize(column, jet4);
    field.attributes = dao::Updatable | (column.fixed ? dao::FixedField : dao::VariableField) |
                       (column.autoNumber ? dao::AutoIncrement : 0);
    field.required = properties.flag(column.name, u"Required"_s);
    field.allowZeroLength = properties.flag(column.name, u"AllowZeroLength"_s);
    field.defaultValue = properties.text(column.name, u"DefaultValue"_s);
    field.validationRule = properties.text(column.name, u"ValidationRule"_s);
    field.validationText = properties.text(column.name, u"ValidationText"_s);
    return field;
}

dao::IndexInfo indexInfo(const IndexDefinition &definition, const TableDefinition &table)
{
    dao::IndexInfo index;
    index.name = definition.name;
    for (const IndexDefinition::Key &key : definition.keys)
        index.fields.append({table.columnByNumber(key.column)->name, key.descending});
    index.primary = definition.primary;
    index.foreign = definition.foreign;
    index.unique = definition.primary || (definition.flags & kUnique);
    index.required = definition.primary || (definition.flags & kRequired);
    index.ignoreNulls = definition.flags & kIgnoreNulls;
    return index;
}

// The referenced side of a relation has an index entry of its own, with a leading dot in its name. It is not shown to
// users.
bool isBookkeeping(const IndexDefinition &definition)
{
    return definition.foreign && definition.name.startsWith(u'.');
}

} // namespace

wire::TableFacts tableSchema(const CatalogEntry &entry, const TableDefinition &table, const Properties &properties,
                             bool jet4)
{
    wire::TableFacts facts;
    facts.info.name = entry.name;
    facts.info.attributes = entry.isHidden() ? dao::HiddenObject : 0;
    bool hasAutoNumber = false;
    for (const ColumnDefinition &column : table.columns) {
        facts.info.fields.append(fieldInfo(column, properties, jet4));
        facts.info.fields.last().ordinal = int(facts.info.fields.size()) - 1;
        facts.fieldDescriptions.append(properties.text(column.name, u"Description"_s));
        hasAutoNumber = hasAutoNumber || (column.autoNumber && column.type == ColumnType::Long);
    }
    for (const IndexDefinition &definition : table.indexes) {
        if (!isBookkeeping(definition))
            facts.info.indexes.append(indexInfo(definition, table));
    }
    facts.info.validationRule = properties.text({}, u"ValidationRule"_s);
    facts.info.validationText = properties.text({}, u"ValidationText"_s);
    facts.description = properties.text({}, u"Description"_s);
    facts.rowCount = table.rowCount;
    facts.lastAutoNumber = hasAutoNumber ? table.lastAutoNumber : 0;
    return facts;
}

} // namespace jet::format

#include "DefinitionPlanner.h"

#include "RuleBinder.h"
#include "Types.h"
#include <dao/sql/ast/NearestName.h>

#include <dao/values/Names.h>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

QString joined(const std::vector<ast::NameAt> &names)
{
    QStringList list;
    for (const ast::NameAt &name : names)
        list.append(name.name);
    return list.join(u'_');
}

} // namespace

const TableInfo &DefinitionPlanner::tableNamed(const ast::NameAt &name) const
{
    if (const TableInfo *table = m_context.schema().findTable(name.name))
        return *table;
    m_context.fail(error::TableDoesNotExist, name.range, {name.name},
                   didYouMean(name.name, m_context.schema().sourceNames()));
}

void DefinitionPlanner::checkName(const ast::NameAt &name) const
{
    if (!isValidName(name.name))
        m_context.fail(error::InvalidName, name.range, {name.name});
}

const FieldInfo &DefinitionPlanner::fieldNamed(const TableInfo &table, const ast::NameAt &name) const
{
    if (const FieldInfo *field = table.field(name.name))
        return *field;
    m_context.fail(error::NoSuchField, name.range, {name.name, table.name}, didYouMean(name.name, fieldNames(table)));
}

void DefinitionPlanner::addIndexField(IndexInfo &index, const TableInfo &table, const ast::NameAt &name,
                                      bool descending) const
{
    const FieldInfo &field = fieldNamed(table, name);
    const bool twice = std::ranges::any_of(index.fields, [&](const auto &other) { return other.name == field.name; });
    if (twice)
        m_context.fail(error::FieldDefinedTwice, name.range);
    index.fields.append({field.name, descending});
}

// A table can have one autonumber, because it is the row key.
FieldInfo DefinitionPlanner::newField(const TableInfo &table, const ast::FieldDefinition &definition) const
{
    checkName(definition.name);
    if (table.field(definition.name.name))
        m_context.fail(error::FieldExists, definition.name.range, {definition.name.name, table.name});
    FieldInfo field = fieldOf(definition);
    const bool second = field.isAutoIncrement() && std::ranges::any_of(table.fields, &FieldInfo::isAutoIncrement);
    if (second)
        m_context.fail(error::InvalidFieldType, definition.name.range, {},
                       u"Table '%1' has an autonumber already."_s.arg(table.name));
    field.ordinal = int(table.fields.size());
    return field;
}

// Sizes are those that the engine reports for a field: 4 for a Long, 0 for a Memo. The default is bound once here, so
// that its errors have a place in the statement.
FieldInfo DefinitionPlanner::fieldOf(const ast::FieldDefinition &definition) const
{
    FieldInfo field;
    field.name = definition.name.name;
    field.type = definition.type.type;
    const bool sized = field.type == DataType::Text || field.type == DataType::Binary;
    field.size = sized ? definition.size : sizeOf(field.type);
    const bool variable =
        isTextType(field.type) || field.type == DataType::LongBinary || field.type == DataType::Binary;
    field.attributes = variable ? VariableField : FixedField;
    if (definition.type.autoIncrement)
        field.attributes |= AutoIncrement;
    field.required = definition.notNull.value_or(false);
    field.allowZeroLength = isTextType(field.type);
    field.defaultValue = definition.defaultValue;
    verifyPart(definition.defaultRange, [&field](BindContext &part) { bindDefault(part, part.text(), field); });
    return field;
}

// A constraint after a field is the same as one of the table over this field alone.
void DefinitionPlanner::addFieldConstraints(Constraints &constraints, FieldInfo &field,
                                            const ast::FieldDefinition &definition, const TableInfo &table) const
{
    for (const ast::Constraint &constraint : definition.constraints) {
        if (constraint.kind == ast::Constraint::Kind::NotNull) {
            field.required = true;
            continue;
        }
        ast::Constraint ofTable;
        ofTable.kind = constraint.kind;
        ofTable.name = constraint.name;
        ofTable.fields = {definition.name};
        ofTable.referencedTable = constraint.referencedTable;
        ofTable.referencedFields = constraint.referencedFields;
        ofTable.cascadeUpdate = constraint.cascadeUpdate;
        ofTable.cascadeDelete = constraint.cascadeDelete;
        ofTable.check = constraint.check;
        ofTable.checkRange = constraint.checkRange;
        ofTable.range = constraint.range;
        addConstraint(constraints, ofTable, table);
    }
}

// Primary keys and unique constraints become indexes. A primary key without a name is called PrimaryKey, as in the
// dialect; a unique index gets the names of its fields.
void DefinitionPlanner::addConstraint(Constraints &constraints, const ast::Constraint &constraint,
                                      const TableInfo &table) const
{
    for (const ast::NameAt &name : constraint.fields)
        fieldNamed(table, name);
    switch (constraint.kind) {
    case ast::Constraint::Kind::ForeignKey:
        constraints.relations.append(relationOf(constraint, table));
        return;
    case ast::Constraint::Kind::Check:
        verifyCheck(constraint, table);
        constraints.checks.append({constraint.name, constraint.check});
        return;
    case ast::Constraint::Kind::NotNull:
        return;
    default:
        break;
    }
    IndexInfo index;
    index.primary = constraint.kind == ast::Constraint::Kind::PrimaryKey;
    index.unique = true;
    index.required = index.primary;
    index.name = !constraint.name.isEmpty() ? constraint.name
                 : index.primary            ? u"PrimaryKey"_s
                                            : joined(constraint.fields);
    for (const ast::NameAt &name : constraint.fields)
        addIndexField(index, table, name, false);
    const bool second =
        std::any_of(constraints.indexes.begin(), constraints.indexes.end(),
                    [](const IndexInfo &i) { return i.primary; }) ||
        std::any_of(table.indexes.begin(), table.indexes.end(), [](const IndexInfo &i) { return i.primary; });
    if (index.primary && second)
        m_context.fail(error::PrimaryKeyExists, constraint.range);
    if (table.index(index.name))
        m_context.fail(error::IndexNameExists, constraint.range, {table.name, index.name});
    constraints.indexes.append(index);
}

void DefinitionPlanner::verifyCheck(const ast::Constraint &constraint, const TableInfo &table) const
{
    Source source;
    source.name = table.name;
    source.table = &table;
    verifyPart(constraint.checkRange, [&source](BindContext &part) { bindRule(part, source, nullptr); });
}

// Conditions and defaults are stored as text and bound again when the table is created. Binding them here gives their
// errors a place in the statement.
void DefinitionPlanner::verifyPart(Range range, const std::function<void(BindContext &)> &bind) const
{
    if (range.length == 0)
        return;
    const NoSchema schema;
    BindContext part(schema, m_context.textOf(range));
    part.forbidParameters();
    try {
        bind(part);
    } catch (const DaoException &exception) {
        m_context.rethrowWithin(exception, range);
    }
}

RelationInfo DefinitionPlanner::relationOf(const ast::Constraint &constraint, const TableInfo &table) const
{
    const bool toItself = constraint.referencedTable.name.compare(table.name, Qt::CaseInsensitive) == 0;
    const TableInfo &primary = toItself ? table : tableNamed(constraint.referencedTable);
    RelationInfo relation;
    relation.table = primary.name;
    relation.foreignTable = table.name;
    relation.name = constraint.name;
    relation.attributes =
        (constraint.cascadeUpdate ? UpdateCascade : 0) | (constraint.cascadeDelete ? DeleteCascade : 0);
    QStringList referenced;
    for (const ast::NameAt &name : constraint.referencedFields)
        referenced.append(name.name);
    // Without a list of fields the primary key is referenced.
    for (const IndexInfo &index : primary.indexes) {
        for (const IndexField &field : index.fields) {
            if (index.primary && constraint.referencedFields.empty())
                referenced.append(field.name);
        }
    }
    if (referenced.size() != qsizetype(constraint.fields.size()))
        m_context.fail(error::RelationTypes, constraint.range);
    for (qsizetype i = 0; i < referenced.size(); ++i) {
        const FieldInfo *field = primary.field(referenced[i]);
        if (!field)
            m_context.fail(error::NoSuchField, constraint.range, {referenced[i], primary.name});
        relation.fields.append({field->name, table.field(constraint.fields[size_t(i)].name)->name});
    }
    return relation;
}

Plan DefinitionPlanner::plan(const ast::CreateTable &node) const
{
    const QString &name = node.table.name;
    checkName(node.table);
    if (m_context.schema().findTable(name) || m_context.schema().findQuery(name))
        m_context.fail(error::TableExists, node.table.range, {name});
    CreateTablePlan plan;
    plan.table.name = name;
    for (const ast::FieldDefinition &definition : node.fields)
        plan.table.fields.append(newField(plan.table, definition));
    Constraints constraints;
    for (size_t i = 0; i < node.fields.size(); ++i)
        addFieldConstraints(constraints, plan.table.fields[qsizetype(i)], node.fields[i], plan.table);
    for (const ast::Constraint &constraint : node.constraints) {
        if (constraint.kind == ast::Constraint::Kind::NotNull) {
            for (const ast::NameAt &field : constraint.fields)
                plan.table.fields[plan.table.indexOf(fieldNamed(plan.table, field).name)].required = true;
        }
        addConstraint(constraints, constraint, plan.table);
    }
    plan.table.indexes = constraints.indexes;
    plan.checks = constraints.checks;
    plan.relations = constraints.relations;
    return plan;
}

Plan DefinitionPlanner::plan(const ast::AlterTable &node) const
{
    const TableInfo &table = tableNamed(node.table);
    return std::visit([&](const auto &item) { return change(item, table); }, node.change);
}

Plan DefinitionPlanner::change(const ast::AlterTable::AddField &change, const TableInfo &table) const
{
    TableInfo widened = table;
    AddFieldPlan plan{table.name, newField(table, change.field), {}, {}, {}};
    widened.fields.append(plan.field);
    Constraints constraints;
    addFieldConstraints(constraints, plan.field, change.field, widened);
    plan.indexes = constraints.indexes;
    plan.relations = constraints.relations;
    plan.checks = constraints.checks;
    return plan;
}

// ALTER COLUMN names the new type only: position, rule, and (unless given) default and NOT NULL stay.
Plan DefinitionPlanner::change(const ast::AlterTable::AlterField &change, const TableInfo &table) const
{
    const FieldInfo *old = &fieldNamed(table, change.field.name);
    AlterFieldPlan plan{table.name, fieldOf(change.field)};
    plan.field.name = old->name;
    plan.field.ordinal = old->ordinal;
    // The parser has left only a named NOT NULL here.
    plan.field.required = !change.field.constraints.empty() || change.field.notNull.value_or(old->required);
    if (isTextType(old->type) && isTextType(plan.field.type))
        plan.field.allowZeroLength = old->allowZeroLength;
    plan.field.validationRule = old->validationRule;
    plan.field.validationText = old->validationText;
    if (plan.field.defaultValue.isEmpty())
        plan.field.defaultValue = old->defaultValue;
    return plan;
}

Plan DefinitionPlanner::change(const ast::AlterTable::DropField &change, const TableInfo &table) const
{
    return DropFieldPlan{table.name, fieldNamed(table, change.field).name};
}

Plan DefinitionPlanner::change(const ast::Constraint &change, const TableInfo &table) const
{
    Constraints constraints;
    addConstraint(constraints, change, table);
    AddConstraintPlan plan{table.name, constraints.indexes, constraints.relations, constraints.checks.value(0)};
    if (change.kind == ast::Constraint::Kind::NotNull) {
        // NOT NULL for one field: changes the field to required.
        AlterFieldPlan alter{table.name, *table.field(change.fields.front().name)};
        alter.field.required = true;
        return alter;
    }
    return plan;
}

Plan DefinitionPlanner::change(const ast::AlterTable::DropConstraint &change, const TableInfo &table) const
{
    return DropConstraintPlan{table.name, change.constraint.name, m_context.userPlace(change.constraint.range)};
}

Plan DefinitionPlanner::plan(const ast::CreateIndex &node) const
{
    const TableInfo &table = tableNamed(node.table);
    checkName(node.index);
    if (table.index(node.index.name))
        m_context.fail(error::IndexNameExists, node.index.range, {table.name, node.index.name});
    CreateIndexPlan plan{table.name, {}};
    plan.index.name = node.index.name;
    plan.index.primary = node.primary;
    plan.index.unique = node.unique || node.primary;
    plan.index.required = node.disallowNull || node.primary;
    plan.index.ignoreNulls = node.ignoreNull;
    for (const ast::CreateIndex::Field &item : node.fields)
        addIndexField(plan.index, table, item.name, item.descending);
    return plan;
}

// DROP TABLE also deletes a stored query of that name.
Plan DefinitionPlanner::plan(const ast::DropTable &node) const
{
    if (const QueryInfo *query = m_context.schema().findQuery(node.table.name))
        return DropTablePlan{query->name};
    return DropTablePlan{tableNamed(node.table).name};
}

Plan DefinitionPlanner::plan(const ast::DropIndex &node) const
{
    const TableInfo &table = tableNamed(node.table);
    const IndexInfo *index = table.index(node.index.name);
    if (!index)
        m_context.fail(error::NoSuchIndex, node.index.range, {node.index.name, table.name});
    return DropIndexPlan{table.name, index->name};
}

Plan DefinitionPlanner::plan(const ast::CreateQuery &node) const
{
    checkName(node.query);
    if (m_context.schema().findTable(node.query.name) || m_context.schema().findQuery(node.query.name))
        m_context.fail(error::ObjectExists, node.query.range, {node.query.name});
    return CreateQueryPlan{{node.query.name, node.sql}};
}

Plan DefinitionPlanner::plan(const ast::DropQuery &node) const
{
    const QueryInfo *query = m_context.schema().findQuery(node.query.name);
    if (!query)
        m_context.fail(error::UnknownSource, node.query.range, {node.query.name},
                       didYouMean(node.query.name, m_context.schema().sourceNames()));
    return DropQueryPlan{query->name};
}

} // namespace dao::sql::bound

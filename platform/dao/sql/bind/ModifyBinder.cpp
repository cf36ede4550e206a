#include "ModifyBinder.h"

#include "RuleBinder.h"
#include "Types.h"
#include <dao/sql/ast/NearestName.h>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

/// The names of a source and of its field in FROM ("p.row"). Inside a stored query the field is empty if the query does
/// not show it. field -1: any field.
std::pair<QString, QString> namesIn(const Scope &scope, const Source &target, int field)
{
    std::pair<QString, QString> names{target.name, {}};
    for (const ScopeSource &source : scope.sources()) {
        for (const ScopeColumn &column : source.columns()) {
            const FieldRef *shown = column.expr->as<FieldRef>();
            if (!shown || shown->source != &target)
                continue;
            names.first = source.name();
            if (shown->field == field)
                return {source.name(), source.name() + u'.' + column.name};
        }
    }
    return names;
}

Range rangeOf(const std::vector<ast::TableRefPtr> &from)
{
    return from.front()->range.to(from.back()->range);
}

} // namespace

// ---- INSERT -----------------------------------------------------------------------------------------------------

// Values are converted to the types of their fields by the statement, because SQLite converts by other rules than the
// dialect.
Insert ModifyBinder::bind(const ast::Insert &insert)
{
    Insert bound;
    bound.table = targetTable(insert.table);
    bindInsertFields(bound, insert);
    if (insert.query)
        bindInsertQuery(bound, insert);
    else
        bindValues(bound, insert);
    addComputedDefaults(bound);
    return bound;
}

// The table of that name, or the only table of a stored query that shows its fields.
const TableInfo *ModifyBinder::targetTable(const ast::NameAt &name)
{
    if (const TableInfo *table = m_context.schema().findTable(name.name))
        return table;
    if (!m_context.schema().findQuery(name.name))
        m_context.fail(error::OutputTableNotFound, name.range, {name.name},
                       didYouMean(name.name, m_context.schema().sourceNames()));
    // Binds "FROM query" as a select would, which flattens the query if its rows are those of one table.
    auto reference = std::make_unique<ast::TableRef>();
    reference->range = name.range;
    reference->node = ast::NamedTable{name.name};
    std::vector<ast::TableRefPtr> from;
    from.push_back(std::move(reference));
    SelectBinder binder(m_context, nullptr);
    binder.bindFrom(from);
    const Select &select = *binder.select();
    if (select.sources.size() != 1 || !select.sources.front()->table)
        m_context.fail(error::NotUpdatableQuery, name.range);
    for (const ScopeColumn &column : binder.scope().sources().front().columns()) {
        if (const FieldRef *field = column.expr->as<FieldRef>()) {
            m_throughQuery.insert(column.name.toLower(), field->field);
            m_queryFields.push_back(field->field);
        }
    }
    return select.sources.front()->table;
}

// A stored query can rename the fields of its table.
int ModifyBinder::fieldNamed(const TableInfo &table, const ast::NameAt &name)
{
    const int field =
        m_throughQuery.isEmpty() ? table.indexOf(name.name) : m_throughQuery.value(name.name.toLower(), -1);
    if (field < 0)
        m_context.fail(error::UnknownInsertField, name.range, {name.name}, didYouMean(name.name, fieldNames(table)));
    return field;
}

// SQLite's length() in the CHECK constraint counts up to the first NUL character, which functions can produce, so the
// size is checked here too.
ExprPtr ModifyBinder::fitted(ExprPtr value, const FieldInfo &field)
{
    if (field.type != DataType::Text || field.size <= 0)
        return value;
    const Literal *literal = value->as<Literal>();
    const FieldRef *column = value->as<FieldRef>();
    const Convert *convert = value->as<Convert>();
    const FieldInfo *from = column ? &column->source->table->fields[column->field] : nullptr;
    const bool fits =
        value->as<ParameterRef>() ||
        (literal && (literal->value.type() != Value::Type::Text || literal->value.text().size() <= field.size)) ||
        (from && from->type == DataType::Text && from->size <= field.size) ||
        (convert && convert->conversion == Conversion::ToText && familyOf(convert->operand->type) != Family::Any);
    if (fits)
        return value;
    const Range range = value->range;
    return m_context.make(range, DataType::Text, Convert{Conversion::Fit, std::move(value), field.size});
}

void ModifyBinder::addField(Insert &bound, int field, Range range)
{
    if (std::find(bound.fields.begin(), bound.fields.end(), field) != bound.fields.end())
        m_context.fail(error::DuplicateDestination, range, {bound.table->fields[field].name});
    bound.fields.push_back(field);
}

void ModifyBinder::bindInsertFields(Insert &bound, const ast::Insert &insert)
{
    for (const ast::NameAt &name : insert.columns)
        addField(bound, fieldNamed(*bound.table, name), name.range);
    // Without a field list VALUES are assigned by position and columns of a query by name.
    if (insert.columns.empty() && !insert.query) {
        for (const int field : m_queryFields)
            addField(bound, field, insert.table.range);
        for (int i = 0; m_queryFields.empty() && i < bound.table->fields.size(); ++i)
            bound.fields.push_back(i);
    }
}

void ModifyBinder::bindValues(Insert &bound, const ast::Insert &insert)
{
    if (insert.values.size() != bound.fields.size())
        m_context.fail(error::InsertCount, insert.values.front()->range.to(insert.values.back()->range));
    ExpressionBinder binder(m_context, nullptr, clause::kValues);
    for (size_t i = 0; i < insert.values.size(); ++i)
        bound.values.push_back(fitted(binder.bindFor(*insert.values[i], bound.table->fields[bound.fields[i]]),
                                      bound.table->fields[bound.fields[i]]));
}

void ModifyBinder::bindInsertQuery(Insert &bound, const ast::Insert &insert)
{
    bound.query = QueryBinder(m_context, nullptr).bind(*insert.query);
    const std::vector<OutputColumn> &columns = bound.query->output();
    if (insert.columns.empty()) {
        for (const OutputColumn &column : columns)
            addField(bound, fieldNamed(*bound.table, {column.info.name, insert.query->range}), insert.query->range);
    }
    if (columns.size() != bound.fields.size())
        m_context.fail(error::InsertCount, insert.query->range);
    ExpressionBinder binder(m_context, nullptr, clause::kValues);
    const std::shared_ptr<Select> &select = bound.query->parts.front().select;
    const bool direct = !bound.query->isUnion() && select && !select->distinct;
    if (direct) {
        for (size_t i = 0; i < columns.size(); ++i) {
            const FieldInfo &field = bound.table->fields[bound.fields[i]];
            select->columns[i].expr = fitted(binder.assigned(columns[i].expr, field), field);
        }
        return;
    }
    // DISTINCT and UNION compare values before the conversion to the fields' types.
    bound.rows = m_context.newSource({}, insert.query->range);
    bound.rows->query = bound.query;
    for (size_t i = 0; i < columns.size(); ++i) {
        const ExprPtr cell =
            m_context.make(insert.query->range, columns[i].info.type, Output{bound.rows.get(), int(i)}, true);
        const FieldInfo &field = bound.table->fields[bound.fields[i]];
        bound.converted.push_back(fitted(binder.assigned(cell, field), field));
    }
}

// Defaults that are not constants are added to the statement.
std::vector<std::pair<int, ExprPtr>> ModifyBinder::computedDefaults(const TableInfo &table, const QSet<int> &given)
{
    std::vector<std::pair<int, ExprPtr>> defaults;
    for (int i = 0; i < table.fields.size(); ++i) {
        const FieldInfo &field = table.fields[i];
        if (given.contains(i) || field.defaultValue.isEmpty() || field.isAutoIncrement())
            continue;
        const ExprPtr value = bindDefault(m_context, field.defaultValue, field);
        if (!value->as<Literal>())
            defaults.emplace_back(i, value);
    }
    return defaults;
}

// A default such as Date() is not constant, so SQLite's DEFAULT clause cannot hold it.
void ModifyBinder::addComputedDefaults(Insert &bound)
{
    const QSet<int> given(bound.fields.begin(), bound.fields.end());
    for (const auto &[field, value] : computedDefaults(*bound.table, given)) {
        bound.fields.push_back(field);
        if (bound.rows)
            bound.converted.push_back(value);
        else if (bound.query)
            bound.query->parts.front().select->columns.push_back(
                {outputInfo(bound.table->fields[field].name, *value), value, true, {}});
        else
            bound.values.push_back(value);
    }
}

// ---- UPDATE -----------------------------------------------------------------------------------------------------

// Any table of a join can be updated, also several at once. Each field is assigned once; new values see the old row.
Update ModifyBinder::bind(const ast::Update &update)
{
    SelectBinder binder(m_context, nullptr);
    binder.bindFrom(update.from);
    requireUpdatable(*binder.select(), rangeOf(update.from));
    Update bound;
    qint64 size = 0;
    for (const ast::Assignment &assignment : update.assignments) {
        AssignedField field = bindAssignment(binder, assignment);
        const bool twice = std::ranges::any_of(bound.fields, [&field](const AssignedField &other) {
            return other.source == field.source && other.field == field.field;
        });
        if (twice)
            m_context.fail(error::DuplicateDestination, assignment.target->range,
                           {assignment.target->as<ast::Name>()->text});
        bound.fields.push_back(std::move(field));
        size += bound.fields.back().value->size;
        m_context.limit(0, size, assignment.value->range);
    }
    binder.bindWhere(update.where.get());
    bound.select = binder.select();
    for (size_t i = 0; i < bound.fields.size(); ++i) {
        const Source &target = *bound.fields[i].source;
        const bool known =
            std::ranges::any_of(bound.absent, [&target](const AbsentRows &absent) { return absent.target == &target; });
        if (target.nullable && !known)
            bindAbsent(bound, binder.scope(), target, update.assignments[i].target->range);
    }
    return bound;
}

// Handles rows of an outer join without a row of an updated table: a row is inserted if all of its join fields are
// assigned; otherwise the statement is refused, because nothing can hold the values.
void ModifyBinder::bindAbsent(Update &bound, const Scope &scope, const Source &target, Range place)
{
    const TableInfo &table = *target.table;
    QSet<int> given;
    for (const AssignedField &field : bound.fields) {
        if (field.source == &target)
            given.insert(field.field);
    }
    const QSet<int> joined = joinedFields(*bound.select).value(&target);
    AbsentRows absent{&target, !joined.isEmpty() && given.contains(joined), {}, place, {}};
    if (absent.added) {
        for (const auto &[field, value] : computedDefaults(table, given))
            absent.defaults.push_back({&target, field, value});
    } else {
        QStringList missing;
        bool canName = true;
        for (int i = 0; i < table.fields.size(); ++i) {
            if (!joined.contains(i) || given.contains(i))
                continue;
            const QString name = namesIn(scope, target, i).second;
            canName = canName && !name.isEmpty();
            missing.append(name);
        }
        absent.hint = u"The join has rows without one of '%1'."_s.arg(namesIn(scope, target, -1).first);
        if (!missing.isEmpty() && canName)
            absent.hint += u" Set %1 as well to add them, or leave them out: WHERE %2 Is Not Null."_s.arg(
                missing.join(u", "_s), missing.constFirst());
    }
    bound.absent.push_back(std::move(absent));
}

void ModifyBinder::requireUpdatable(const Select &select, Range range)
{
    for (const auto &source : select.sources) {
        if (!source->table)
            m_context.fail(error::NotUpdatableQuery, range);
    }
}

// Only a field of a table can be assigned, not a computed column and not an autonumber.
AssignedField ModifyBinder::bindAssignment(SelectBinder &binder, const ast::Assignment &assignment)
{
    const ast::Name &name = *assignment.target->as<ast::Name>();
    const Range range = assignment.target->range;
    const Scope &scope = binder.scope();
    const Scope::Found found =
        name.parts.size() == 2 ? scope.find(name.parts[0], name.parts[1]) : scope.find(name.text, 0, size_t(-1));
    if (found.count > 1)
        m_context.fail(error::AmbiguousField, range, {name.text});
    if (found.count == 0 || name.parts.size() > 2)
        m_context.fail(error::UnknownName, range, {name.text}, didYouMean(name.last(), scope.columnNames()));
    const ExprPtr expr = found.source->column(found.column, m_context);
    const FieldRef *column = expr->as<FieldRef>();
    if (!column)
        m_context.fail(error::FieldNotUpdatable, range, {name.text});
    const FieldInfo &field = column->source->table->fields[column->field];
    if (field.isAutoIncrement())
        m_context.fail(error::FieldNotUpdatable, range, {name.text});
    ExpressionBinder values = binder.expressions(clause::kWhere);
    return {column->source, column->field, fitted(values.bindFor(*assignment.value, field), field)};
}

// ---- DELETE -----------------------------------------------------------------------------------------------------

Delete ModifyBinder::bind(const ast::Delete &statement)
{
    SelectBinder binder(m_context, nullptr);
    binder.bindFrom(statement.from);
    Delete bound;
    bound.deleteTarget = deleteTargetOf(binder, statement);
    binder.bindWhere(statement.where.get());
    bound.select = binder.select();
    return bound;
}

// The table of the first "t.*"; without one, the only table.
const Source *ModifyBinder::deleteTargetOf(const SelectBinder &binder, const ast::Delete &statement)
{
    QString named;
    Range range = rangeOf(statement.from);
    for (const ast::SelectItem &item : statement.items) {
        if (!item.starQualifier.isEmpty()) {
            named = item.starQualifier;
            range = item.range;
            break;
        }
    }
    const std::vector<ScopeSource> &sources = binder.scope().sources();
    if (named.isEmpty() && sources.size() > 1) {
        // A list of fields: the first qualified field determines the table.
        for (const ast::SelectItem &item : statement.items) {
            const ast::Name *name = item.isStar() ? nullptr : item.expr->as<ast::Name>();
            if (name && name->parts.size() == 2 && named.isEmpty()) {
                named = name->parts.front();
                range = item.range;
            }
        }
        if (named.isEmpty())
            m_context.fail(error::NoDeleteTable, range);
    }
    return tableOf(binder, named.isEmpty() ? sources.front().name() : named, range);
}

const Source *ModifyBinder::tableOf(const SelectBinder &binder, const QString &name, Range range)
{
    const ScopeSource *scoped = binder.scope().source(name);
    if (!scoped)
        m_context.fail(error::UnknownSource, range, {name});
    // For a stored query over one table: the rows of that table.
    const Source *target = nullptr;
    for (const ScopeColumn &column : scoped->columns()) {
        const FieldRef *field = column.expr->as<FieldRef>();
        if (!field)
            continue;
        if (target && target != field->source)
            m_context.fail(error::CannotDelete, range);
        target = field->source;
    }
    if (!target)
        m_context.fail(error::CannotDelete, range);
    return target;
}

} // namespace dao::sql::bound

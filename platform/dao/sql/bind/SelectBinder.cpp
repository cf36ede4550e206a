#include "QueryBinder.h"
#include "Types.h"

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

constexpr int kFirstUnnamed = 1000;
// SQLite's limit for columns of a result.
constexpr size_t kMaxColumns = 2000;

} // namespace

SelectBinder::SelectBinder(BindContext &context, const Scope *outer, Reads reads)
    : m_context(context)
    , m_reads(reads)
    , m_scope(outer)
    , m_select(std::make_shared<Select>())
{
}

ExpressionBinder SelectBinder::expressions(const Clause &clause)
{
    ExpressionBinder binder(m_context, &m_scope, clause);
    binder.setSelect(m_select.get());
    return binder;
}

std::shared_ptr<Select> SelectBinder::bind(const ast::Select &select)
{
    m_select->distinct = select.duplicates == ast::Duplicates::Distinct;
    m_select->top = select.top;
    m_expandsStar = !readsNoCell(select);
    bindFrom(select.from);
    bindList(select.items);
    bindWhere(select.where.get());
    bindGroupBy(select);
    bindOrderBy(select);
    if (select.duplicates == ast::Duplicates::DistinctRow)
        bindDistinctRow();
    checkClauses(select);
    return m_select;
}

void SelectBinder::bindWhere(const ast::Expr *where)
{
    if (!where)
        return;
    ExprPtr condition = expressions(clause::kWhere).bindCondition(*where);
    const ExprPtr &flattened = m_select->where;
    m_select->where =
        flattened ? m_context.make(where->range, DataType::Boolean, Chain{true, {flattened, condition}}) : condition;
}

// All aliases are known before the first item is bound: an item may use an alias that is defined after it.
void SelectBinder::bindList(const std::vector<ast::SelectItem> &items)
{
    for (const ast::SelectItem &item : items) {
        if (item.alias.isEmpty())
            continue;
        if (m_aliases.contains({item.alias}))
            m_context.fail(error::DuplicateAlias, item.range, {item.alias});
        m_aliases.insert({item.alias}, {item.expr.get(), nullptr, false});
    }
    m_select->columns.reserve(items.size());
    for (const ast::SelectItem &item : items) {
        if (item.isStar())
            addStar(item);
        else
            addItem(item);
        if (m_select->columns.size() > kMaxColumns)
            m_context.fail(error::TooComplex, item.range);
    }
    nameColumns();
}

// Everything that can depend on the columns is excluded: EXISTS (SELECT * FROM t WHERE ...).
bool SelectBinder::readsNoCell(const ast::Select &select) const
{
    return m_reads == Reads::Rows && select.duplicates == ast::Duplicates::Keep && !select.top &&
           select.orderBy.empty() && select.items.size() == 1;
}

// Expands "*" and "t.*" to the columns of the sources, in their order.
void SelectBinder::addStar(const ast::SelectItem &item)
{
    bool found = false;
    for (const ScopeSource &source : m_scope.sources()) {
        if (!item.starQualifier.isEmpty() && item.starQualifier.compare(source.name(), Qt::CaseInsensitive) != 0)
            continue;
        found = true;
        if (!m_expandsStar)
            continue;
        const std::vector<ScopeColumn> columns = source.columns();
        m_select->columns.reserve(m_select->columns.size() + columns.size());
        for (const ScopeColumn &column : columns)
            m_select->columns.push_back({outputInfo(column.name, *column.expr), column.expr, true, source.name()});
    }
    if (found)
        return;
    if (item.starQualifier.isEmpty())
        m_context.fail(error::EmptyStatement, item.range);
    m_context.fail(error::UnknownName, item.range, {item.starQualifier + u".*"});
}

// Names the column by its alias, else by its field, else "Expr1000", "Expr1001", ...
void SelectBinder::addItem(const ast::SelectItem &item)
{
    OutputColumn column;
    if (!item.alias.isEmpty()) {
        column.expr = bindAlias(m_aliases[{item.alias}], item.alias, item.range);
        column.info = outputInfo(item.alias, *column.expr);
        column.named = true;
    } else {
        ExpressionBinder binder = expressions(clause::kSelectList);
        binder.setAliases([this](const QString &name, Range where) { return aliasNamed(name, where); });
        column.expr = binder.bind(*item.expr);
        const ast::Name *name = item.expr->as<ast::Name>();
        const bool isField = name && !column.expr->as<ParameterRef>();
        if (isField) {
            // Output names have the spelling of the schema, not that of the statement.
            const Scope::Found found = name->parts.size() == 2 ? m_scope.find(name->parts[0], name->parts[1])
                                                               : m_scope.find(name->text, 0, size_t(-1));
            column.named = found.count > 0;
            column.qualifier = found.source ? found.source->name() : QString();
            column.info =
                outputInfo(found.source ? found.source->columnName(found.column) : name->last(), *column.expr);
            if (!found.source)
                column.named = true;
        } else {
            column.info = outputInfo(u"Expr%1"_s.arg(kFirstUnnamed + m_unnamed++), *column.expr);
        }
    }
    m_select->columns.push_back(std::move(column));
}

// Fields with the same name from different sources are qualified with the names of their sources.
void SelectBinder::nameColumns()
{
    if (m_scope.sources().size() < 2)
        return;
    struct Uses
    {
        QString name; ///< keeps the text of the key
        QString qualifier;
        bool isShared = false;
    };
    QHash<NameKey, Uses> uses;
    for (const OutputColumn &column : m_select->columns) {
        if (column.qualifier.isEmpty())
            continue;
        Uses &use = uses[{column.info.name}];
        use.isShared = use.isShared || (!use.name.isNull() && use.qualifier != column.qualifier);
        use.name = use.name.isNull() ? column.info.name : use.name;
        use.qualifier = column.qualifier;
    }
    for (OutputColumn &column : m_select->columns) {
        if (!column.qualifier.isEmpty() && uses[{column.info.name}].isShared)
            column.info.name = column.qualifier + u'.' + column.info.name;
    }
}

ExprPtr SelectBinder::aliasNamed(const QString &name, Range where)
{
    if (m_aliases.isEmpty())
        return nullptr;
    const auto found = m_aliases.find({name});
    return found == m_aliases.end() ? nullptr : bindAlias(*found, name, where);
}

ExprPtr SelectBinder::bindAlias(Alias &alias, const QString &name, Range where)
{
    if (alias.bound)
        return alias.bound;
    if (alias.binding) {
        // "x AS x" refers to the column; any other alias that refers to itself is a circular reference.
        const ast::Name *self = alias.expr->as<ast::Name>();
        if (self && self->isSimple() && self->text.compare(name, Qt::CaseInsensitive) == 0)
            return nullptr;
        m_context.fail(error::CircularAlias, where, {name});
    }
    alias.binding = true;
    ExpressionBinder binder = expressions(clause::kSelectList);
    binder.setAliases([this](const QString &other, Range place) { return aliasNamed(other, place); });
    const ExprPtr bound = binder.bind(*alias.expr);
    Alias &entry = m_aliases[{name}];
    entry.bound = bound;
    entry.binding = false;
    return bound;
}

void SelectBinder::bindGroupBy(const ast::Select &select)
{
    for (const ast::ExprPtr &expr : select.groupBy)
        m_select->groupBy.push_back(expressions(clause::kGroupBy).bind(*expr));
    if (select.having)
        m_select->having = expressions(clause::kHaving).bindCondition(*select.having);
    m_select->aggregated = !m_select->groupBy.empty() || (m_select->having && hasAggregate(*m_select->having)) ||
                           std::any_of(m_select->columns.begin(), m_select->columns.end(),
                                       [](const OutputColumn &column) { return hasAggregate(*column.expr); });
}

void SelectBinder::bindOrderBy(const ast::Select &select)
{
    for (const ast::OrderItem &item : select.orderBy)
        m_select->order.push_back(bindOrderItem(item));
    if (select.orderBy.empty())
        inheritOrder();
}

OrderKey SelectBinder::bindOrderItem(const ast::OrderItem &item)
{
    OrderKey key;
    key.descending = item.descending;
    const ast::Literal *literal = item.expr->as<ast::Literal>();
    if (literal && literal->value.type() == Value::Type::Long) {
        const qint64 place = literal->value.integer();
        if (place < 1 || place > qint64(m_select->columns.size()))
            m_context.fail(error::UnknownName, item.expr->range, {m_context.textOf(item.expr->range)});
        key.output = int(place) - 1;
        key.expr = m_select->columns[size_t(key.output)].expr;
        return key;
    }
    key.expr = expressions(m_select->aggregated ? clause::kOrderBy : clause::kOrderByUngrouped).bind(*item.expr);
    for (size_t i = 0; i < m_select->columns.size() && key.output < 0; ++i) {
        if (sameExpr(*m_select->columns[i].expr, *key.expr))
            key.output = int(i);
    }
    if (m_select->distinct && key.output < 0)
        m_context.fail(error::OrderByNotSelected, item.expr->range, {m_context.textOf(item.expr->range)});
    return key;
}

// Rows of a single ordered source keep its order.
void SelectBinder::inheritOrder()
{
    if (m_scope.sources().size() != 1 || m_select->aggregated || m_select->distinct)
        return;
    for (const OrderKey &key : m_inheritedOrder)
        m_select->order.push_back({key.expr, key.descending, -1});
}

// DISTINCTROW: removes repeated combinations of rows of the tables that have an output field. Nothing to do if all
// tables have one.
void SelectBinder::bindDistinctRow()
{
    if (m_select->aggregated || m_select->sources.size() < 2)
        return;
    std::vector<const Source *> used;
    for (const auto &source : m_select->sources) {
        if (!source->table)
            return;
        // A subquery can refer to any source.
        const auto reads = [&source](const Expr &part) {
            const FieldRef *column = part.as<FieldRef>();
            return (column && column->source == source.get()) || subqueryOf(part);
        };
        const bool contributes = std::any_of(m_select->columns.begin(), m_select->columns.end(),
                                             [&](const OutputColumn &column) { return anyPart(*column.expr, reads); });
        if (contributes)
            used.push_back(source.get());
    }
    if (!used.empty() && used.size() < m_select->sources.size())
        m_select->rowSources = std::move(used);
}

void SelectBinder::checkClauses(const ast::Select &select)
{
    if (select.having && !m_select->aggregated)
        m_context.fail(error::HavingWithoutGroup, select.having->range, {m_context.textOf(select.having->range)});
    if (!m_select->aggregated)
        return;
    size_t starColumns = 0;
    for (const ast::SelectItem &item : select.items)
        starColumns += item.isStar();
    if (starColumns > 0)
        m_context.fail(error::NotGrouped, select.items.front().range, {u"*"_s});
    for (size_t i = 0; i < m_select->columns.size(); ++i)
        checkGrouped(*m_select->columns[i].expr, m_select->columns[i].expr->range);
    if (m_select->having)
        checkGrouped(*m_select->having, m_select->having->range);
    for (const OrderKey &key : m_select->order)
        checkGrouped(*key.expr, key.expr->range);
}

// Each column outside an aggregate must be part of a group key, also if a subquery refers to it, because the aggregates
// of the subquery use other rows.
void SelectBinder::checkGrouped(const Expr &expr, Range place, bool inSubquery) const
{
    // Parts of a flattened query have places in the query's text, not in this one.
    if (expr.range.start >= place.start && expr.range.end() <= place.end())
        place = expr.range;
    const bool isKey = std::any_of(m_select->groupBy.begin(), m_select->groupBy.end(),
                                   [&expr](const ExprPtr &key) { return sameExpr(*key, expr); });
    if (isKey || (expr.as<Aggregate>() && !inSubquery))
        return;
    const FieldRef *column = expr.as<FieldRef>();
    const Output *output = expr.as<Output>();
    if (column || output) {
        const Source *source = column ? column->source : output->source;
        const bool own = std::any_of(m_select->sources.begin(), m_select->sources.end(),
                                     [source](const auto &mine) { return mine.get() == source; });
        if (own) {
            const QString name = outputInfo({}, expr).sourceField;
            m_context.fail(error::NotGrouped, place, {name.isEmpty() ? m_context.textOf(place) : name});
        }
        return;
    }
    forEachChild(expr, [&](const ExprPtr &child) { checkGrouped(*child, place, inSubquery); });
    if (const Query *subquery = subqueryOf(expr))
        forEachExpr(*subquery, [&](const Expr &part) { checkGrouped(part, place, true); });
}

} // namespace dao::sql::bound

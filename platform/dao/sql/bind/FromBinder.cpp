#include "QueryBinder.h"
#include "TransformBinder.h"
#include "Types.h"
#include <dao/sql/ast/NearestName.h>

#include <dao/sql/ast/Parser.h>

using namespace Qt::StringLiterals;

namespace dao::sql::bound {
namespace {

// SQLite joins at most 64 tables; some are reserved for tables that the generator adds.
constexpr size_t kMaxJoined = 60;

// See replaceTop().
bool isTopOfOneTable(const Query &query)
{
    const Select *select = query.singleSelect();
    return select && select->top && select->sources.size() == 1 && select->sources.front()->table &&
           !select->aggregated && !select->distinct;
}

bool isField(const OutputColumn &column)
{
    return column.expr->as<FieldRef>() || column.expr->as<Output>();
}

/// A table that contributes a row to every row of the select, or null.
const Source *presentTable(const Select &select)
{
    const auto found = std::ranges::find_if(
        select.sources, [](const std::unique_ptr<Source> &source) { return source->table && !source->nullable; });
    return found == select.sources.end() ? nullptr : found->get();
}

/// True if each row of the query is a combination of rows of its tables, so that it can be flattened into the outer
/// query.
bool canFlatten(const Query &query, bool nullable)
{
    const Select *select = query.singleSelect();
    if (!select || select->sources.empty() || select->aggregated || select->distinct || select->top ||
        !select->rowSources.empty())
        return false;
    // On the null-supplied side of a join computed columns must be Null if there is no row; the key of a table tells
    // whether there is one.
    return !nullable || presentTable(*select) || std::ranges::all_of(select->columns, isField);
}

} // namespace

void SelectBinder::bindFrom(const std::vector<ast::TableRefPtr> &from)
{
    for (const ast::TableRefPtr &table : from) {
        m_select->from.push_back(bindTable(*table, false));
        addWhere(m_filters.take(m_select->from.back().get()));
    }
    m_select->commaJoin = m_select->commaJoin || from.size() > 1;
    if (m_select->sources.size() > kMaxJoined)
        m_context.fail(error::TooComplex, from.front()->range);
    bindPendingJoins();
}

std::shared_ptr<JoinTree> SelectBinder::bindTable(const ast::TableRef &table, bool nullable)
{
    const BindContext::Level level(m_context, table.range);
    return std::visit([&](const auto &node) { return bindNode(node, table, nullable); }, table.node);
}

std::shared_ptr<JoinTree> SelectBinder::bindNode(const ast::NamedTable &node, const ast::TableRef &table, bool nullable)
{
    const Range nameRange{table.range.start, table.range.length};
    if (const TableInfo *info = m_context.schema().findTable(node.name))
        return addBaseTable(*info, table.alias.isEmpty() ? info->name : table.alias, nameRange, nullable);
    if (const QueryInfo *info = m_context.schema().findQuery(node.name)) {
        const QString name = table.alias.isEmpty() ? info->name : table.alias;
        return addQuery(bindStoredQuery(*info, nameRange), name, nameRange, nullable);
    }
    m_context.fail(error::UnknownSource, nameRange, {node.name},
                   didYouMean(node.name, m_context.schema().sourceNames()));
}

// The query sees the outer queries but not the other sources of this FROM.
std::shared_ptr<JoinTree> SelectBinder::bindNode(const ast::DerivedTable &node, const ast::TableRef &table,
                                                 bool nullable)
{
    return addQuery(QueryBinder(m_context, m_scope.outer()).bind(*node.query), table.alias, table.range, nullable);
}

std::shared_ptr<JoinTree> SelectBinder::bindNode(const ast::Join &node, const ast::TableRef &, bool nullable)
{
    const size_t first = m_scope.sources().size();
    auto join = std::make_shared<JoinTree>();
    join->kind = node.kind;
    join->left = bindTable(*node.left, nullable || node.kind == JoinKind::Right);
    join->right = bindTable(*node.right, nullable || node.kind == JoinKind::Left);
    PendingJoin pending{join, node.on.get(), first, m_scope.sources().size(), {}};
    // The condition of a flattened query belongs to the ON clause of the join that supplies Null for it; without such a
    // join it becomes part of the condition of the whole.
    const auto place = [&](const JoinTreePtr &side, JoinKind supplying) {
        const ExprPtr filter = m_filters.take(side.get());
        if (!filter)
            return;
        if (node.kind == JoinKind::Inner || node.kind == supplying)
            pending.filters.push_back(filter);
        else
            m_filters.insert(join.get(), filter);
    };
    place(join->left, JoinKind::Right);
    place(join->right, JoinKind::Left);
    m_pending.push_back(std::move(pending));
    return join;
}

// The conditions of flattened queries are joined by And with that of the statement.
void SelectBinder::addWhere(const ExprPtr &condition)
{
    if (!condition)
        return;
    const ExprPtr &where = m_select->where;
    m_select->where = where ? m_context.make({}, DataType::Boolean, Chain{true, {where, condition}}) : condition;
}

// ON clauses are bound after all sources of FROM are known, because names are resolved by scope, not by position.
void SelectBinder::bindPendingJoins()
{
    for (const PendingJoin &pending : m_pending) {
        ExpressionBinder binder = expressions(clause::kJoin);
        binder.limitTo(pending.first, pending.last);
        pending.join->on = binder.bindCondition(*pending.on);
        if (pending.filters.empty())
            continue;
        std::vector<ExprPtr> terms{pending.join->on};
        terms.insert(terms.end(), pending.filters.begin(), pending.filters.end());
        pending.join->on = m_context.make(pending.on->range, DataType::Boolean, Chain{true, std::move(terms)});
    }
    m_pending.clear();
}

std::shared_ptr<JoinTree> SelectBinder::addBaseTable(const TableInfo &info, const QString &name, Range range,
                                                     bool nullable)
{
    std::unique_ptr<Source> source = m_context.newSource(name, range);
    source->table = &info;
    source->nullable = nullable;
    addToScope({name, *source}, range);
    auto leaf = std::make_shared<JoinTree>();
    leaf->source = source.get();
    m_select->sources.push_back(std::move(source));
    return leaf;
}

// The text is parsed at each use. Parameters that it declares become parameters of the statement.
std::shared_ptr<Query> SelectBinder::bindStoredQuery(const QueryInfo &info, Range range)
{
    const BindContext::Substitution substitution(m_context, info.name, info.sql, range);
    try {
        const ast::Statement statement = ast::Parser(info.sql).parseStatement();
        for (const ast::ParameterDeclaration &declaration : statement.parameters)
            m_context.declare(declaration);
        if (const auto *transform = std::get_if<ast::Transform>(&statement.node))
            return bindStoredTransform(*transform);
        const ast::QueryPtr *query = std::get_if<ast::QueryPtr>(&statement.node);
        const ast::Select *select = query ? (*query)->singleSelect() : nullptr;
        if (!query || (select && select->into))
            m_context.fail(error::ActionQueryAsSource, range, {info.name});
        return QueryBinder(m_context, nullptr).bind(**query);
    } catch (const DaoException &exception) {
        m_context.rethrow(exception);
    }
}

// A query that is a source needs its columns at compile time, so dynamic headings are read now.
std::shared_ptr<Query> SelectBinder::bindStoredTransform(const ast::Transform &node)
{
    if (node.headings.empty() && !m_context.canReadHeadings())
        m_context.fail(error::SyntaxInTransform, node.select.range, {},
                       u"A cross table that another query reads needs fixed headings: PIVOT ... IN (...)."_s);
    auto query = std::make_shared<Query>();
    query->parts.push_back({TransformBinder(m_context).bindSource(node), nullptr, false});
    return query;
}

// Flattened queries keep their tables visible to SQLite's planner and their rows updatable; others are nested in FROM.
std::shared_ptr<JoinTree> SelectBinder::addQuery(const std::shared_ptr<Query> &query, const QString &name, Range range,
                                                 bool nullable)
{
    if (isTopOfOneTable(*query))
        replaceTop(*query->parts.front().select, range);
    std::vector<ScopeColumn> scoped;
    if (canFlatten(*query, nullable)) {
        std::shared_ptr<JoinTree> from = flattenSubquery(*query, scoped, nullable);
        addToScope({name, std::move(scoped)}, range);
        return from;
    }
    std::unique_ptr<Source> source = m_context.newSource(name, range);
    source->query = query;
    source->nullable = nullable;
    const std::vector<OutputColumn> &columns = query->output();
    for (size_t i = 0; i < columns.size(); ++i) {
        const bool fixedType = !columns[i].expr || columns[i].expr->hasFixedType;
        scoped.push_back(
            {columns[i].info.name, m_context.make({}, columns[i].info.type, Output{source.get(), int(i)}, fixedType)});
    }
    m_inheritedOrder = orderOfOutput(*query, scoped);
    addToScope({name, std::move(scoped)}, range);
    auto leaf = std::make_shared<JoinTree>();
    leaf->source = source.get();
    m_select->sources.push_back(std::move(source));
    return leaf;
}

// Translates the order of the query to its output columns, as far as they contain the order keys.
std::vector<OrderKey> SelectBinder::orderOfOutput(const Query &query, const std::vector<ScopeColumn> &scoped)
{
    const Select *select = query.singleSelect();
    std::vector<OrderKey> order;
    for (const OrderKey &key : select ? select->order : query.order) {
        if (key.output < 0)
            break;
        order.push_back({scoped[size_t(key.output)].expr, key.descending, -1});
    }
    return order;
}

// Replaces TOP over a table by "key IN (keys of the first rows)", which keeps the rows updatable. The inner query uses
// the same source number, which hides the outer one, so condition and order need no copy.
void SelectBinder::replaceTop(Select &select, Range range)
{
    constexpr double kWholePercent = 100;
    const Top top = *std::exchange(select.top, std::nullopt);
    if (top.percent && top.count >= kWholePercent)
        return;
    auto rows = std::make_shared<Select>();
    rows->sources.push_back(std::make_unique<Source>(*select.sources.front()));
    auto leaf = std::make_shared<JoinTree>();
    leaf->source = rows->sources.front().get();
    rows->from.push_back(std::move(leaf));
    rows->where = select.where;
    rows->order = select.order;
    rows->top = top;
    const auto keyOf = [&](const Select &of) {
        return m_context.make(range, DataType::Long, Key{of.sources.front().get()}, true);
    };
    const ExprPtr key = keyOf(*rows);
    rows->columns.push_back({outputInfo({}, *key), key, true, {}});
    auto first = std::make_shared<Query>();
    first->parts.push_back({rows, nullptr, false});
    QueryBinder(m_context, nullptr).measure(*first, range);
    select.where = m_context.make(range, DataType::Boolean, InQuery{keyOf(select), first, false});
}

// Moves the tables of the inner query to this one, adds its condition as a term, and makes its column names aliases of
// their expressions.
std::shared_ptr<JoinTree> SelectBinder::flattenSubquery(const Query &query, std::vector<ScopeColumn> &scoped,
                                                        bool nullable)
{
    const std::shared_ptr<Select> &inner = query.parts.front().select;
    const Source *present = nullable ? presentTable(*inner) : nullptr;
    scoped.reserve(inner->columns.size());
    for (const OutputColumn &column : inner->columns)
        scoped.push_back({column.info.name, present ? wherePresent(column, *present) : column.expr});
    for (std::unique_ptr<Source> &source : inner->sources) {
        source->nullable = source->nullable || nullable;
        m_select->sources.push_back(std::move(source));
    }
    inner->sources.clear();
    m_select->commaJoin = m_select->commaJoin || inner->commaJoin;
    if (!nullable)
        addWhere(inner->where);
    m_inheritedOrder = inner->order;
    JoinTreePtr from = inner->from.front();
    for (size_t i = 1; i < inner->from.size(); ++i) {
        auto join = std::make_shared<JoinTree>();
        join->left = from;
        join->right = inner->from[i];
        from = join;
    }
    if (nullable && inner->where)
        m_filters.insert(from.get(), inner->where);
    return std::const_pointer_cast<JoinTree>(from);
}

// A computed column is Null if the join has no row to compute it from.
ExprPtr SelectBinder::wherePresent(const OutputColumn &column, const Source &table)
{
    if (isField(column))
        return column.expr;
    const Range range = column.expr->range;
    const ExprPtr key = m_context.make(range, DataType::Long, Key{&table}, true);
    When there{m_context.make(range, DataType::Boolean, IsNull{key, true}), column.expr};
    std::vector<When> branches;
    branches.push_back(std::move(there));
    return m_context.make(range, column.expr->type, Case{std::move(branches), nullptr}, column.expr->hasFixedType);
}

void SelectBinder::addToScope(ScopeSource source, Range range)
{
    const QString name = source.name();
    if (!m_scope.add(std::move(source)))
        m_context.fail(error::RepeatedTable, range, {name});
}

} // namespace dao::sql::bound

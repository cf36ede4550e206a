#include "Correlation.h"

#include <utility>

namespace dao::sql::generate {
namespace {

using namespace bound;

/// Compares sources by number: one source can occur twice, in a query and in a nested one that hides it.
class Names
{
public:
    void visit(const Expr &expr)
    {
        anyPart(expr, [this](const Expr &part) {
            visitPart(part);
            return false;
        });
    }
    void visit(const Query &query)
    {
        visitSources(query);
        forEachExpr(query, [this](const Expr &expr) { visit(expr); });
    }

    QSet<int> own;
    QSet<int> named;
    bool hasTop = false;
    bool varies = false;

private:
    void visitPart(const Expr &part)
    {
        if (const FieldRef *field = part.as<FieldRef>())
            named.insert(field->source->number);
        else if (const Output *output = part.as<Output>())
            named.insert(output->source->number);
        else if (const Key *key = part.as<Key>())
            named.insert(key->source->number);
        else if (const Call *call = part.as<Call>())
            varies = varies || QStringView(call->function->name) == u"Rnd";
        varies = varies || part.as<DomainCall>();
        if (const Query *query = subqueryOf(part))
            visit(*query);
    }
    void visitSources(const Query &query)
    {
        for (const QueryPart &part : query.parts) {
            if (part.nested) {
                visitSources(*part.nested);
                continue;
            }
            hasTop = hasTop || (part.select->top && !part.select->order.empty());
            for (const auto &source : part.select->sources) {
                own.insert(source->number);
                if (source->query)
                    visitSources(*source->query);
            }
        }
    }
};

// The numbers of the sources in FROM.
QSet<int> numbersOf(const Select &select)
{
    QSet<int> numbers;
    for (const auto &source : select.sources)
        numbers.insert(source->number);
    return numbers;
}

void forEachCondition(const JoinTree &from, const std::function<void(const Expr &)> &visit)
{
    if (from.source)
        return;
    if (from.on)
        visit(*from.on);
    forEachCondition(*from.left, visit);
    forEachCondition(*from.right, visit);
}

// True for a field that GROUP BY names: it has one value per group.
bool isGroupKey(const Expr &expr, const Select &select)
{
    return expr.as<FieldRef>() &&
           std::ranges::any_of(select.groupBy, [&](const ExprPtr &key) { return sameExpr(*key, expr); });
}

/// The pair of fields of a term "field = the same field of the outer row", both of one table.
std::optional<GroupTest::Pair> pairOf(const Expr &term, const Select &inner, const Select &around)
{
    const Compare *compare = term.as<Compare>();
    if (!compare || compare->op != BinaryOp::Equal)
        return std::nullopt;
    GroupTest::Pair pair{compare->left, compare->right};
    const Source &table = *inner.sources.front();
    if (const FieldRef *field = pair.outer->as<FieldRef>(); field && field->source->number == table.number)
        std::swap(pair.inner, pair.outer);
    const FieldRef *mine = pair.inner->as<FieldRef>();
    const FieldRef *other = pair.outer->as<FieldRef>();
    if (!mine || !other || mine->source->number != table.number || other->source->table != table.table ||
        other->field != mine->field || !numbersOf(around).contains(other->source->number))
        return std::nullopt;
    return pair;
}

/// The field that a term restricts to few values, or null.
const FieldRef *restricted(const Expr &term)
{
    if (const Compare *compare = term.as<Compare>(); compare && compare->op == BinaryOp::Equal) {
        const FieldRef *left = compare->left->as<FieldRef>();
        return left ? left : compare->right->as<FieldRef>();
    }
    if (const InList *list = term.as<InList>(); list && !list->negated)
        return list->operand->as<FieldRef>();
    const Between *between = term.as<Between>();
    return between && !between->negated ? between->operand->as<FieldRef>() : nullptr;
}

/// True for "key IN (SELECT TOP ... key FROM the same table ...)" if all pairs belong to the row with that key.
bool isOwnKey(const InQuery &test, const GroupTest &group)
{
    const FieldRef *mine = test.operand->as<FieldRef>();
    const FieldRef *other = test.query->singleSelect()->columns.front().expr->as<FieldRef>();
    if (!mine || !other || mine->field != other->field ||
        other->source->number != group.pairs.front().inner->as<FieldRef>()->source->number)
        return false;
    const auto isOfRow = [&](const GroupTest::Pair &pair) {
        return pair.outer->as<FieldRef>()->source->number == mine->source->number;
    };
    return isUniqueKey(*other) && std::ranges::all_of(group.pairs, isOfRow);
}

// Copies the conditions on the outer row into the subquery that computes all groups, so that groups of excluded rows
// are not computed. Worthwhile only if a condition restricts the rows by an index or by the group; otherwise evaluating
// it twice costs more than it saves.
void addFilter(GroupTest &test, const Select &around)
{
    const Source *row = test.pairs.front().outer->as<FieldRef>()->source;
    bool restricts = false;
    for (const ExprPtr &term : termsOf(around.where)) {
        Names names;
        names.visit(*term);
        if (names.varies || readsRows(*term) || names.named != QSet<int>{row->number})
            continue;
        const FieldRef *field = restricted(*term);
        const auto isPaired = [&](const GroupTest::Pair &pair) {
            return pair.outer->as<FieldRef>()->field == field->field;
        };
        restricts = restricts || (field && (leadsIndex(*field) || std::ranges::any_of(test.pairs, isPaired)));
        test.filter.push_back(term);
    }
    if (!restricts)
        test.filter.clear();
}

} // namespace

// Correlated subqueries are found by difference: every source that is named but neither in FROM nor inside belongs to
// an outer query.
Reading readingOf(const Select &select)
{
    Reading reading;
    Names all;
    all.own = numbersOf(select);
    const auto visit = [&](const Expr &expr) {
        all.visit(expr);
        anyPart(expr, [&](const Expr &part) {
            if (const Query *query = subqueryOf(part)) {
                Names inside;
                inside.visit(*query);
                reading.hasFreeSubquery = reading.hasFreeSubquery || inside.own.contains(inside.named);
            }
            return false;
        });
    };
    for (const JoinTreePtr &from : select.from)
        forEachCondition(*from, visit);
    if (select.where)
        visit(*select.where);
    for (const OrderKey &key : select.order)
        visit(*key.expr);
    reading.namesOuter = !all.own.contains(all.named);
    reading.hasTop = all.hasTop;
    reading.varies = all.varies;
    return reading;
}

bool namesOthers(const Expr &expr, const Select &select)
{
    Names names;
    names.own = numbersOf(select);
    names.visit(expr);
    return !names.own.contains(names.named);
}

bool namesOwn(const Expr &expr, const Select &select)
{
    Names names;
    names.visit(expr);
    return names.named.intersects(numbersOf(select));
}

// -1 if the value depends on several sources, on other rows, or on chance.
int onlySourceOf(const Expr &expr)
{
    Names names;
    names.visit(expr);
    const bool plain = !names.varies && !readsRows(expr) && !hasAggregate(expr) && names.named.size() == 1;
    return plain ? *names.named.cbegin() : -1;
}

// SQLite can search an index only by its first fields.
bool leadsIndex(const FieldRef &field)
{
    const TableInfo &table = *field.source->table;
    return std::ranges::any_of(table.indexes, [&](const IndexInfo &index) {
        return !index.fields.isEmpty() && table.indexOf(index.fields.front().name) == field.field;
    });
}

// A unique index admits several rows with Null, so its fields must be required unless Null is ignored.
bool holdUniqueKey(const TableInfo &table, const QSet<int> &fields, Nulls nulls)
{
    if (std::ranges::any_of(fields, [&](int field) { return table.fields[field].isAutoIncrement(); }))
        return true;
    const auto has = [&](const IndexField &field) {
        const int index = table.indexOf(field.name);
        return fields.contains(index) &&
               (nulls == Nulls::Ignored || table.fields[index].required || table.fields[index].isAutoIncrement());
    };
    return std::ranges::any_of(table.indexes, [&](const IndexInfo &index) {
        return (index.primary || index.unique) && !index.fields.isEmpty() && std::ranges::all_of(index.fields, has);
    });
}

bool isUniqueKey(const FieldRef &field)
{
    return holdUniqueKey(*field.source->table, {field.field}, Nulls::Refused);
}

// The terms that must all be true. Nested conjunctions are flattened.
std::vector<ExprPtr> termsOf(const ExprPtr &condition)
{
    std::vector<ExprPtr> terms;
    forEachTerm(condition, [&terms](const ExprPtr &term) { terms.push_back(term); });
    return terms;
}

// A subquery qualifies if it refers to the outer row only by "field = same field of the outer row": then its result is
// the same for all outer rows of a group.
std::optional<GroupTest> groupTestOf(const InQuery &test, const Select &around)
{
    const Select *inner = test.query->singleSelect();
    if (test.negated || !inner || inner->sources.size() != 1 || !inner->sources.front()->table || inner->distinct ||
        inner->columns.size() != 1 || namesOthers(*inner->columns.front().expr, *inner))
        return std::nullopt;
    const bool firstRows = inner->top && !inner->top->percent && !inner->order.empty() && !inner->aggregated;
    const bool groups = !inner->top && !inner->groupBy.empty();
    const auto isFree = [&](const Expr &expr) { return !namesOthers(expr, *inner); };
    if (!(firstRows || groups) ||
        !std::ranges::all_of(inner->groupBy, [&](const ExprPtr &key) { return isFree(*key); }) ||
        !std::ranges::all_of(inner->order, [&](const OrderKey &key) { return isFree(*key.expr); }))
        return std::nullopt;
    GroupTest result;
    for (const ExprPtr &term : termsOf(inner->where)) {
        if (const auto pair = pairOf(*term, *inner, around))
            result.pairs.push_back(*pair);
        else if (isFree(*term))
            result.where.push_back(term);
        else
            return std::nullopt;
    }
    for (const ExprPtr &term : termsOf(inner->having)) {
        const auto pair = pairOf(*term, *inner, around);
        if (pair && isGroupKey(*pair->inner, *inner))
            result.pairs.push_back(*pair);
        else if (isFree(*term))
            result.having.push_back(term);
        else
            return std::nullopt;
    }
    if (result.pairs.empty())
        return std::nullopt;
    addFilter(result, around);
    result.ofKey = firstRows && isOwnKey(test, result);
    return result;
}

// The condition may name only the key and values that are the same for all rows of the group.
bool isConditionOnKey(const Expr &term, const Select &select)
{
    const auto isFree = [&](const ExprPtr &expr) { return !hasAggregate(*expr) && !namesOwn(*expr, select); };
    if (const Compare *compare = term.as<Compare>())
        return (isGroupKey(*compare->left, select) && isFree(compare->right)) ||
               (isGroupKey(*compare->right, select) && isFree(compare->left));
    if (const InList *list = term.as<InList>())
        return isGroupKey(*list->operand, select) && std::ranges::all_of(list->items, isFree);
    if (const Between *between = term.as<Between>())
        return isGroupKey(*between->operand, select) && isFree(between->low) && isFree(between->high);
    const bound::IsNull *isNull = term.as<bound::IsNull>();
    return isNull && isGroupKey(*isNull->operand, select);
}

} // namespace dao::sql::generate

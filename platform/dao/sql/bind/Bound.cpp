#include "Bound.h"

namespace dao::sql::bound {
namespace {

template <typename... Visitors>
struct Overloaded : Visitors...
{
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

/// The attributes of a node besides its children, to compare two nodes.
std::pair<int, int> tagsOf(const Expr &expr)
{
    using Tags = std::pair<int, int>;
    return std::visit(Overloaded{
                          [](const FieldRef &n) {
                              return Tags{n.source->number, n.field};
                          },
                          [](const Output &n) {
                              return Tags{n.source->number, n.index};
                          },
                          [](const Key &n) {
                              return Tags{n.source->number, 0};
                          },
                          [](const ParameterRef &n) {
                              return Tags{n.id, 0};
                          },
                          [](const Arithmetic &n) {
                              return Tags{int(n.op), 0};
                          },
                          [](const Compare &n) {
                              return Tags{int(n.op), 0};
                          },
                          [](const Logic &n) {
                              return Tags{int(n.op), 0};
                          },
                          [](const Like &n) {
                              return Tags{n.ansi, 0};
                          },
                          [](const Chain &n) {
                              return Tags{n.isAnd, 0};
                          },
                          [](const Between &n) {
                              return Tags{n.negated, 0};
                          },
                          [](const InList &n) {
                              return Tags{n.negated, 0};
                          },
                          [](const IsNull &n) {
                              return Tags{n.negated, 0};
                          },
                          [](const Convert &n) {
                              return Tags{int(n.conversion), 0};
                          },
                          [](const auto &) { return Tags{}; },
                      },
                      expr.node);
}

const FunctionInfo *functionOf(const Expr &expr)
{
    if (const Call *call = expr.as<Call>())
        return call->function;
    if (const Aggregate *aggregate = expr.as<Aggregate>())
        return aggregate->function;
    const DomainCall *domain = expr.as<DomainCall>();
    return domain ? domain->function : nullptr;
}

std::vector<const Expr *> childrenOf(const Expr &expr)
{
    std::vector<const Expr *> children;
    forEachChild(expr, [&children](const ExprPtr &child) { children.push_back(child.get()); });
    return children;
}

// Only "field = field" terms that must all hold: under Or an equality does not restrict the join.
void collectEqualities(const Expr &condition, QHash<const Source *, QSet<int>> &fields)
{
    if (const Chain *chain = condition.as<Chain>(); chain && chain->isAnd) {
        for (const ExprPtr &term : chain->terms)
            collectEqualities(*term, fields);
        return;
    }
    const Compare *compare = condition.as<Compare>();
    if (!compare || compare->op != BinaryOp::Equal)
        return;
    const FieldRef *left = compare->left->as<FieldRef>();
    const FieldRef *right = compare->right->as<FieldRef>();
    if (!left || !right || left->source == right->source)
        return;
    fields[left->source].insert(left->field);
    fields[right->source].insert(right->field);
}

void collectJoins(const JoinTree &from, QHash<const Source *, QSet<int>> &fields)
{
    if (from.source)
        return;
    if (from.on)
        collectEqualities(*from.on, fields);
    collectJoins(*from.left, fields);
    collectJoins(*from.right, fields);
}

} // namespace

void forEachChild(const Expr &expr, const std::function<void(const ExprPtr &)> &visit)
{
    std::visit([&visit](const auto &node) { forEachOperand(node, visit); }, expr.node);
}

const Query *subqueryOf(const Expr &expr)
{
    return std::visit(
        [](const auto &node) -> const Query * {
            if constexpr (requires { node.query; })
                return node.query.get();
            else
                return nullptr;
        },
        expr.node);
}

void forEachExpr(const Query &query, const std::function<void(const Expr &)> &visit)
{
    const auto visitOne = [&](const ExprPtr &expr) {
        if (expr)
            visit(*expr);
    };
    const std::function<void(const JoinTree &)> visitFrom = [&](const JoinTree &from) {
        if (from.source)
            return;
        visitOne(from.on);
        visitFrom(*from.left);
        visitFrom(*from.right);
    };
    for (const QueryPart &part : query.parts) {
        if (part.nested) {
            forEachExpr(*part.nested, visit);
            continue;
        }
        const Select &select = *part.select;
        for (const OutputColumn &column : select.columns)
            visitOne(column.expr);
        for (const JoinTreePtr &from : select.from)
            visitFrom(*from);
        visitOne(select.where);
        for (const ExprPtr &key : select.groupBy)
            visitOne(key);
        visitOne(select.having);
        for (const OrderKey &key : select.order)
            visitOne(key.expr);
        for (const auto &source : select.sources) {
            if (source->query)
                forEachExpr(*source->query, visit);
        }
    }
}

QHash<const Source *, QSet<int>> joinedFields(const Select &select)
{
    QHash<const Source *, QSet<int>> fields;
    for (const JoinTreePtr &from : select.from)
        collectJoins(*from, fields);
    return fields;
}

// Used to keep the nesting of parentheses in the generated text low (see Generator::embedded).
bool nests(const Query &query)
{
    for (const QueryPart &part : query.parts) {
        if (part.nested)
            return true;
        for (const auto &source : part.select->sources) {
            if (source->query)
                return true;
        }
    }
    bool found = false;
    forEachExpr(query, [&found](const Expr &expr) {
        found = found || anyPart(expr, [](const Expr &part) { return subqueryOf(part) != nullptr; });
    });
    return found;
}

// Collects the sources that the query defines and those that its expressions refer to.
bool isUncorrelated(const Query &query)
{
    // Compares sources by number: one source can occur twice, in a query and in a nested one that hides it.
    QSet<int> own;
    QSet<int> named;
    std::function<void(const Query &)> visitQuery;
    const auto visitSource = [&](const Source *source) {
        if (source)
            named.insert(source->number);
    };
    const auto visitPart = [&](const Expr &part) {
        if (const FieldRef *field = part.as<FieldRef>())
            visitSource(field->source);
        if (const Output *output = part.as<Output>())
            visitSource(output->source);
        if (const Key *key = part.as<Key>())
            visitSource(key->source);
        if (const Aggregate *aggregate = part.as<Aggregate>()) {
            visitSource(aggregate->own);
            for (const Source *source : aggregate->order)
                visitSource(source);
        }
        if (const Query *subquery = subqueryOf(part))
            visitQuery(*subquery);
        return false;
    };
    const std::function<void(const Query &)> visitSources = [&](const Query &of) {
        for (const QueryPart &part : of.parts) {
            if (part.nested) {
                visitSources(*part.nested);
                continue;
            }
            for (const auto &source : part.select->sources) {
                own.insert(source->number);
                if (source->query)
                    visitSources(*source->query);
            }
        }
    };
    visitQuery = [&](const Query &of) {
        visitSources(of);
        forEachExpr(of, [&](const Expr &expr) { anyPart(expr, visitPart); });
    };
    visitQuery(query);
    return own.contains(named);
}

bool anyPart(const Expr &expr, const std::function<bool(const Expr &)> &test)
{
    if (test(expr))
        return true;
    bool found = false;
    forEachChild(expr, [&](const ExprPtr &child) { found = found || anyPart(*child, test); });
    return found;
}

bool hasAggregate(const Expr &expr)
{
    return anyPart(expr, [](const Expr &part) { return part.as<Aggregate>() != nullptr; });
}

bool hasSubquery(const Expr &expr)
{
    return anyPart(expr, [](const Expr &part) { return subqueryOf(part) != nullptr; });
}

bool readsRows(const Expr &expr)
{
    return anyPart(expr, [](const Expr &part) { return subqueryOf(part) || part.as<DomainCall>(); });
}

// Compares structurally: GROUP BY x + 1 groups the output column x + 1.
bool sameExpr(const Expr &left, const Expr &right)
{
    if (&left == &right)
        return true;
    if (left.node.index() != right.node.index() || tagsOf(left) != tagsOf(right) ||
        functionOf(left) != functionOf(right) || subqueryOf(left) != subqueryOf(right))
        return false;
    if (const Literal *literal = left.as<Literal>())
        return literal->value == right.as<Literal>()->value;
    if (const Heading *heading = left.as<Heading>())
        return heading->value == right.as<Heading>()->value;
    const std::vector<const Expr *> mine = childrenOf(left);
    const std::vector<const Expr *> others = childrenOf(right);
    return std::equal(mine.begin(), mine.end(), others.begin(), others.end(),
                      [](const Expr *a, const Expr *b) { return sameExpr(*a, *b); });
}

} // namespace dao::sql::bound

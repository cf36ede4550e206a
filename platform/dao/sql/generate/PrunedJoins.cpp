#include "Correlation.h"
#include "Generator.h"

#include <dao/sql/bind/Types.h>

using namespace Qt::StringLiterals;

// Join pruning: a table that is joined by its key and not read otherwise, like the label tables in the program's views,
// only tests whether the key exists. It is omitted from FROM, and the other side of the join is tested against its
// keys.

namespace dao::sql::generate {
namespace {

using namespace bound;

/// Counts the references to each source, by source number.
class Uses
{
public:
    void count(const Select &select, bool cells)
    {
        for (const OutputColumn &column : select.columns) {
            if (cells)
                count(column.expr);
        }
        for (const JoinTreePtr &from : select.from)
            count(*from);
        count(select.where);
        for (const ExprPtr &key : select.groupBy)
            count(key);
        count(select.having);
        for (const OrderKey &key : select.order)
            count(key.expr);
        for (const auto &source : select.sources) {
            if (source->query)
                forEachExpr(*source->query, [this](const Expr &expr) { count(expr); });
        }
    }
    int of(const Source &source) const { return m_counts.value(source.number); }

private:
    void count(const ExprPtr &expr)
    {
        if (expr)
            count(*expr);
    }
    void count(const JoinTree &from)
    {
        if (from.source)
            return;
        count(from.on);
        count(*from.left);
        count(*from.right);
    }
    void count(const Expr &expr)
    {
        anyPart(expr, [this](const Expr &part) {
            if (const FieldRef *field = part.as<FieldRef>())
                ++m_counts[field->source->number];
            else if (const Key *key = part.as<Key>())
                ++m_counts[key->source->number];
            else if (const Aggregate *aggregate = part.as<Aggregate>())
                count(*aggregate);
            if (const Query *query = subqueryOf(part))
                forEachExpr(*query, [this](const Expr &inner) { count(inner); });
            return false;
        });
    }
    void count(const Aggregate &aggregate)
    {
        if (aggregate.own)
            ++m_counts[aggregate.own->number];
        for (const Source *source : aggregate.order)
            ++m_counts[source->number];
    }

    QHash<int, int> m_counts;
};

/// True for a unique integer key of at most 16 bits, of which there are few enough to count.
bool isSmallKey(const FieldRef &field)
{
    const DataType type = field.source->table->fields[field.field].type;
    return (type == DataType::Integer || type == DataType::Byte) && isUniqueKey(field);
}

/// True if the source is in a list of tables or in a cross join.
bool isCrossed(const JoinTree &from, const Source &source)
{
    if (from.source)
        return false;
    const auto is = [&](const JoinTree &side) { return side.source == &source; };
    return is(*from.left) || is(*from.right) ? from.kind == JoinKind::Inner && !from.on
                                             : isCrossed(*from.left, source) || isCrossed(*from.right, source);
}

bool canLeaveOut(const Select &select, const FieldRef &field, const Uses &uses)
{
    const Source &source = *field.source;
    const auto isIt = [&](const auto &own) { return own.get() == &source; };
    if (!source.table || source.nullable || uses.of(source) != 1 || !std::ranges::any_of(select.sources, isIt) ||
        !isSmallKey(field))
        return false;
    return std::ranges::any_of(select.from, [&](const JoinTreePtr &from) {
        return isCrossed(*from, source) || (from->source == &source && select.from.size() > 1);
    });
}

} // namespace

void Generator::notePruned(const Select &select, Shape shape)
{
    // Rows that are displayed or changed individually need the keys of all their tables.
    const bool keyed = (shape == Shape::Plain || shape == Shape::Keys) && !select.aggregated && !select.distinct;
    if (keyed || select.top || !select.rowSources.empty() || select.sources.size() < 2)
        return;
    Uses uses;
    uses.count(select, shape != Shape::Exists);
    QSet<int> needed;
    for (const ExprPtr &term : termsOf(select.where)) {
        const Compare *compare = term->as<Compare>();
        if (!compare || compare->op != BinaryOp::Equal)
            continue;
        const FieldRef *left = compare->left->as<FieldRef>();
        const FieldRef *right = compare->right->as<FieldRef>();
        if (!left || !right || left->source == right->source || !isIntegerType(compare->left->type) ||
            !isIntegerType(compare->right->type))
            continue;
        for (const auto &[field, other] : {std::pair(right, left), std::pair(left, right)}) {
            if (!canLeaveOut(select, *field, uses) || m_pruned.contains(other->source->number) ||
                needed.contains(field->source->number))
                continue;
            m_pruned.insert(field->source->number);
            needed.insert(other->source->number);
            m_numberTests.insert(compare, field->source);
            break;
        }
    }
}

JoinTreePtr Generator::withoutPruned(const JoinTreePtr &from) const
{
    if (m_pruned.isEmpty())
        return from;
    if (from->source)
        return m_pruned.contains(from->source->number) ? nullptr : from;
    const JoinTreePtr left = withoutPruned(from->left);
    const JoinTreePtr right = withoutPruned(from->right);
    if (!left || !right)
        return left ? left : right;
    auto join = std::make_shared<JoinTree>(*from);
    join->left = left;
    join->right = right;
    return join;
}

// Keys without a gap are tested as a range from the first to the last one. If there is a gap, the lower bound is Null
// and the list of keys is tested instead. The subqueries run once for all rows.
//     SELECT Count(*) AS n FROM t, w WHERE t.a = w.k
//     SELECT count(*) FROM "t" AS _s1 WHERE (_s1."a" BETWEEN (SELECT CASE count(*) WHEN max("k") - min("k") + 1 THEN
//         min("k") END FROM "w") AND (SELECT max("k") FROM "w") OR _s1."a" IN (SELECT "k" FROM "w"))
QString Generator::numberTestText(const Compare &node, const Source &pruned)
{
    const bool isRight = node.right->as<FieldRef>()->source == &pruned;
    const FieldRef &field = *(isRight ? node.right : node.left)->as<FieldRef>();
    const QString number = value(isRight ? *node.left : *node.right).text;
    const QString name = quotedName(pruned.table->fields[field.field].name);
    const QString from = u" FROM "_s + quotedName(pruned.table->name);
    const QString first = u"min("_s + name + u')';
    const QString last = u"max("_s + name + u')';
    return u'(' + number + u" BETWEEN (SELECT CASE count(*) WHEN "_s + last + u" - "_s + first + u" + 1 THEN "_s +
           first + u" END"_s + from + u") AND (SELECT "_s + last + from + u") OR "_s + number + u" IN (SELECT "_s +
           name + from + u"))"_s;
}

} // namespace dao::sql::generate

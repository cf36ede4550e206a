#include "Correlation.h"
#include "Generator.h"

using namespace Qt::StringLiterals;

// SQLite creates an automatic index for a join of fields but not for computed values; it would compare all pairs of
// rows. So one side is computed first, once per row, as a column of a subquery that can be indexed.

namespace dao::sql::generate {
namespace {

using namespace bound;

const Source *sourceOf(const Select &select, int number)
{
    const auto found = std::ranges::find_if(
        select.sources, [number](const auto &source) { return source->number == number && source->table; });
    return found == select.sources.end() ? nullptr : found->get();
}

void collect(const JoinTree &from, const std::function<void(const ExprPtr &, const Source *)> &take)
{
    if (from.source)
        return;
    const JoinTree *absent = from.kind == JoinKind::Left    ? from.right.get()
                             : from.kind == JoinKind::Right ? from.left.get()
                                                            : nullptr;
    forEachTerm(from.on, [&](const ExprPtr &term) { take(term, absent ? absent->source : nullptr); });
    collect(*from.left, take);
    collect(*from.right, take);
}

/// True for an equality that SQLite can use to find the rows of the source.
bool finds(const Expr &term, const Source &source)
{
    const Compare *compare = term.as<Compare>();
    if (!compare || compare->op != BinaryOp::Equal)
        return false;
    const auto isField = [&](const Expr &side) {
        const FieldRef *field = side.as<FieldRef>();
        return field && field->source->number == source.number;
    };
    return isField(*compare->left) || isField(*compare->right);
}

/// True for an expression that refers to the row key: its name exists only outside of the computed table.
bool namesKey(const Expr &expr)
{
    return anyPart(expr, [](const Expr &part) { return part.as<Key>() != nullptr; });
}

} // namespace

void Generator::noteHashes(const Select &select)
{
    if (select.sources.size() < 2)
        return;
    for (const JoinTreePtr &from : select.from)
        collect(*from, [&](const ExprPtr &term, const Source *absent) { noteHash(*term, select, absent); });
    forEachTerm(select.where, [&](const ExprPtr &term) { noteHash(*term, select, nullptr); });
}

// nullable: the null-supplied table of the term.
void Generator::noteHash(const Expr &term, const Select &select, const Source *nullable)
{
    const Compare *compare = term.as<Compare>();
    if (!compare || compare->op != BinaryOp::Equal)
        return;
    // Most joins are of fields, which SQLite can index, and most other tests are of a field and a constant.
    const auto isKnown = [](const Expr &side) {
        return side.as<FieldRef>() || side.as<Literal>() || side.as<ParameterRef>();
    };
    if ((isKnown(*compare->left) && isKnown(*compare->right)) || !sameNumbersText(*compare).isEmpty())
        return;
    const Source *left = sourceOf(select, onlySourceOf(*compare->left));
    const Source *right = sourceOf(select, onlySourceOf(*compare->right));
    if (!left || !right || left == right)
        return;
    // The table with fewer fields is usually the smaller one.
    const bool takesLeft = nullable ? nullable == left : left->table->fields.size() < right->table->fields.size();
    const Source &source = takesLeft ? *left : *right;
    const Expr &computed = takesLeft ? *compare->left : *compare->right;
    if ((source.nullable && nullable != &source) || computed.as<FieldRef>() || namesKey(computed))
        return;
    if (m_hashes.contains(source.number)) {
        if (m_hashes[source.number].test == compare)
            m_grouped.insert(source.number);
        return;
    }
    bool found = false;
    const auto look = [&](const ExprPtr &other) { found = found || finds(*other, source); };
    for (const JoinTreePtr &from : select.from)
        collect(*from, [&](const ExprPtr &other, const Source *) { look(other); });
    forEachTerm(select.where, look);
    if (found)
        return;
    m_hashes.insert(source.number, {compare, &computed});
    m_grouped.insert(source.number);
}

// LIMIT -1 keeps SQLite from flattening the subquery, which would drop the computed column.
//     SELECT t.a FROM t INNER JOIN v ON t.a * 2 = v.b * 3
//     SELECT _s1."a" FROM "t" AS _s1 JOIN (SELECT "rowid" AS _k, *, _s2."b" * 3 AS _h FROM "v" AS _s2 LIMIT -1) AS _s2
//         ON _s2._h = _s1."a" * 2 ORDER BY _s1."id", _s2._k
QString Generator::hashedLeafText(const Source &source)
{
    const QString alias = aliasOf(source);
    return u"(SELECT "_s + quotedName(source.table->keyColumn) + u" AS "_s + m_target.keyPrefix + u", *, "_s +
           sortable(*m_hashes[source.number].value) + u" AS _h FROM "_s + quotedName(source.table->name) + u" AS "_s +
           alias + m_target.limit + u"-1) AS "_s + alias;
}

} // namespace dao::sql::generate

#pragma once
#include <dao/sql/bind/Bound.h>

#include <optional>
#include <QSet>

namespace dao::sql::generate {

/// Everything besides its own rows that FROM, WHERE and ORDER BY of a select depend on.
struct Reading
{
    bool namesOuter = false;      ///< refers to a source of an outer query
    bool hasFreeSubquery = false; ///< has an uncorrelated subquery, which runs once for all rows
    bool hasTop = false;          ///< has a TOP with ORDER BY in a subquery
    bool varies = false;          ///< calls Rnd or a domain function, which can return another value the second time
};
Reading readingOf(const bound::Select &select);

/// True if the expression refers to a source that belongs neither to the select nor to a query inside the expression.
bool namesOthers(const bound::Expr &expr, const bound::Select &select);
/// True if the expression, or a query in it, refers to a source of the select.
bool namesOwn(const bound::Expr &expr, const bound::Select &select);

/// The number of the only source that a deterministic expression refers to; -1 for other expressions.
int onlySourceOf(const bound::Expr &expr);

/// True if the field is the first of an index.
bool leadsIndex(const bound::FieldRef &field);

enum class Nulls { Refused, Ignored };
/// True if the fields contain a unique key of the table, so no two rows have equal values in them. A unique index
/// admits any number of Null rows, so a key that must distinguish all rows must refuse Null.
bool holdUniqueKey(const TableInfo &table, const QSet<int> &fields, Nulls nulls);
/// True if the field alone is a unique key that refuses Null.
bool isUniqueKey(const bound::FieldRef &field);

/// The terms of a conjunction; none for null.
std::vector<bound::ExprPtr> termsOf(const bound::ExprPtr &condition);
/// Visits these terms.
template <typename Visit>
void forEachTerm(const bound::ExprPtr &condition, const Visit &visit)
{
    const bound::Chain *chain = condition ? condition->as<bound::Chain>() : nullptr;
    if (!chain || !chain->isAnd) {
        if (condition)
            visit(condition);
        return;
    }
    for (const bound::ExprPtr &term : chain->terms)
        forEachTerm(term, visit);
}

/// A test of a row against a correlated query over the same table that is correlated only by equal fields: "the first
/// two results of its tube", "a duplicate". One run of the query gives the result for all rows.
struct GroupTest
{
    struct Pair
    {
        bound::ExprPtr inner;
        bound::ExprPtr outer;
    };
    std::vector<Pair> pairs;
    std::vector<bound::ExprPtr> where;  ///< other terms of the query's WHERE
    std::vector<bound::ExprPtr> having; ///< other terms of the query's HAVING
    /// Conditions on the outer row's own fields, if an index can answer one of them: only groups of such rows are
    /// needed.
    std::vector<bound::ExprPtr> filter;
    /// The test compares the row's own unique key: the found row is the row itself, so its group is the same.
    bool ofKey = false;
};
std::optional<GroupTest> groupTestOf(const bound::InQuery &test, const bound::Select &around);

/// True if a HAVING term can be moved to WHERE: it compares a group key with a value from outside of the group.
bool isConditionOnKey(const bound::Expr &term, const bound::Select &select);

} // namespace dao::sql::generate

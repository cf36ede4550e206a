#pragma once
#include "../bind/Bound.h"

#include <optional>
#include <QSet>

namespace dao::sql::generate {

/// What FROM, WHERE and ORDER BY of a select read besides its own rows.
struct Reading
{
    bool namesOuter = false;      ///< a source of a query around it
    bool hasFreeSubquery = false; ///< a subquery that names nothing outside itself: run once for all rows
    bool hasTop = false;          ///< a TOP with an order, somewhere in a subquery
    bool varies = false;          ///< Rnd and domain functions: may give another value the second time
};
Reading readingOf(const bound::Select &select);

/// True when the expression names a source that is none of the select's own, or of queries in the expression.
bool namesOthers(const bound::Expr &expr, const bound::Select &select);
/// True when the expression, or a query in it, names a source of the select.
bool namesOwn(const bound::Expr &expr, const bound::Select &select);

/// The number of the only source that an expression names, which is the same each time; -1 for another expression.
int onlySourceOf(const bound::Expr &expr);

/// True when the field is the first of an index.
bool leadsIndex(const bound::FieldRef &field);

enum class Nulls { Refused, Ignored };
/// True when the fields hold a unique key of the table: no two rows have the same values in them. A unique index lets
/// any number of rows be Null, so a key that has to tell all rows apart must refuse Null.
bool holdUniqueKey(const TableInfo &table, const QSet<int> &fields, Nulls nulls);
/// True when the field alone is a unique key, which is never Null.
bool isUniqueKey(const bound::FieldRef &field);

/// The terms of a condition that all have to hold; none for null.
std::vector<bound::ExprPtr> termsOf(const bound::ExprPtr &condition);

/// A test of a row against a query over the same table, which names the row by equal fields only: "the first two of
/// its tube", "a duplicate". All rows' answers follow from one run of that query.
struct GroupTest
{
    struct Pair
    {
        bound::ExprPtr inner;
        bound::ExprPtr outer;
    };
    std::vector<Pair> pairs;
    std::vector<bound::ExprPtr> where;  ///< other terms of the query's conditions
    std::vector<bound::ExprPtr> having; ///< likewise
    /// Conditions of the row by its own fields, when one of them may be answered by an index: only groups of such rows
    /// are needed.
    std::vector<bound::ExprPtr> filter;
    /// The test is of the row's own unique key: the row in the group is the row itself, so its groups are the same.
    bool ofKey = false;
};
std::optional<GroupTest> groupTestOf(const bound::InQuery &test, const bound::Select &around);

/// True for a term of HAVING that can as well be a term of WHERE: the comparison of a group key with something that is
/// not of the group.
bool isConditionOnKey(const bound::Expr &term, const bound::Select &select);

} // namespace dao::sql::generate

#pragma once
#include "FunctionTable.h"

#include <dao/sql/ast/Statement.h>
#include <dao/values/Schema.h>

#include <functional>
#include <memory>
#include <QHash>
#include <QSet>

namespace dao::sql::bound {

using ast::JoinKind;
using ast::Range;
using ast::Top;

struct Expr;
struct Query;
struct Select;
/// Bound expressions are immutable, so they can be shared: an alias that is used twice is one tree with two owners.
using ExprPtr = std::shared_ptr<const Expr>;
using QueryPtr = std::shared_ptr<const Query>;

/// A source of rows: a base table, or a subquery that could not be flattened into the outer query.
struct Source
{
    int number = 0;                   ///< unique within the statement
    QString name;                     ///< its name in the statement
    const TableInfo *table = nullptr; ///< null for a nested query
    QueryPtr query;
    bool nullable = false; ///< on the null-supplied side of an outer join
};

using Nodes = Shapes<ExprPtr, QueryPtr>;
using Literal = Nodes::Literal;
using Chain = Nodes::Chain;
using Between = Nodes::Between;
using InList = Nodes::InList;
using InQuery = Nodes::InQuery;
using IsNull = Nodes::IsNull;
using Exists = Nodes::Exists;
using Quantified = Nodes::Quantified;
/// A field of a base table.
struct FieldRef
{
    const Source *source;
    int field;
};
/// An output column of a nested query.
struct Output
{
    const Source *source;
    int index;
};
/// The row key of a base table.
struct Key
{
    const Source *source;
};
struct ParameterRef
{
    int id;
};
struct Negate
{
    ExprPtr operand;
};
struct Not
{
    ExprPtr operand;
};
/// Power to Subtract on numbers.
struct Arithmetic
{
    BinaryOp op;
    ExprPtr left;
    ExprPtr right;
};
/// "+" of texts: Null if one of them is Null.
struct JoinText
{
    std::vector<ExprPtr> terms;
};
/// "+" of operands whose type is known only at run time.
struct AddAny
{
    ExprPtr left;
    ExprPtr right;
};
/// "&": Null counts as empty text.
struct Concatenate
{
    std::vector<ExprPtr> terms;
};
struct Compare
{
    BinaryOp op;
    ExprPtr left;
    ExprPtr right;
};
struct Like
{
    ExprPtr text;
    ExprPtr pattern;
    bool ansi; ///< % and _ instead of * and ?
};
/// Xor, Eqv, Imp
struct Logic
{
    BinaryOp op;
    ExprPtr left;
    ExprPtr right;
};
struct ScalarQuery
{
    QueryPtr query;
    bool single; ///< known to return at most one row
};
struct When
{
    ExprPtr condition;
    ExprPtr value;
};
struct Case
{
    std::vector<When> branches;
    ExprPtr otherwise; ///< null: Null
};
struct Coalesce
{
    ExprPtr value;
    ExprPtr instead;
};
struct Call
{
    const FunctionInfo *function;
    std::vector<ExprPtr> arguments;
    bool refusesNull = false; ///< the "$" form
};
struct Aggregate
{
    const FunctionInfo *function;
    ExprPtr argument; ///< null: Count(*)
    /// Sources of the rows: First and Last use the order of their keys.
    std::vector<const Source *> order;
    ExprPtr filter; ///< aggregates only rows that satisfy it; null: all
    /// If the argument names no source of the query that is aggregated: one of its sources, null if it has none.
    const Source *own = nullptr;
    /// True if the argument may name only fields of an outer query; SQLite would then assign the aggregate to the outer
    /// query.
    bool namesOuter = false;
};
/// Equality with Null equal to Null (SQLite IS).
struct Same
{
    ExprPtr left;
    ExprPtr right;
};
/// The value of a heading of a cross table: SQLite SQL, or empty if it is known only at run time.
struct Heading
{
    QString value;
};
/// A domain function whose texts are known only when a row is read; it runs a query through the engine.
struct DomainCall
{
    const FunctionInfo *function;
    std::vector<ExprPtr> arguments;
};

enum class Conversion {
    ToText,   ///< like CStr, by the type of the operand
    ToNumber, ///< numeric text becomes a number; other text is a type mismatch
    ToDate,
    ToTruth, ///< a number or numeric text as a condition
    Assign,  ///< like an assignment to a field of the node's type
    Fit      ///< limits a text to the size of a field
};
struct Convert
{
    Conversion conversion;
    ExprPtr operand;
    int size = 0;
};

struct Expr
{
    Range range;
    Range place; ///< the place in the user's text; for parts of a stored query the place of its name
    DataType type = DataType::Unknown; ///< Unknown: Null, or known only at run time
    /// True for columns, literals and declared parameters: their type is used in comparisons. Other expressions are
    /// converted by their values.
    bool hasFixedType = false;
    int depth = 1;
    /// Number of nodes, with shared subtrees counted at each use: a measure of the length of the SQL text.
    qint64 size = 1;
    std::variant<Literal, FieldRef, Output, Key, ParameterRef, Negate, Not, Arithmetic, JoinText, AddAny, Concatenate,
                 Compare, Like, Logic, Chain, Between, InList, InQuery, IsNull, Exists, Quantified, ScalarQuery, Case,
                 Coalesce, Call, Aggregate, Same, Heading, DomainCall, Convert>
        node;

    template <typename T>
    const T *as() const
    {
        return std::get_if<T>(&node);
    }
};

struct JoinTree;
using JoinTreePtr = std::shared_ptr<const JoinTree>;
/// A leaf with a source, or a join of two trees.
struct JoinTree
{
    const Source *source = nullptr;
    JoinKind kind = JoinKind::Inner;
    JoinTreePtr left;
    JoinTreePtr right;
    ExprPtr on; ///< null: cross join
};

struct OutputColumn
{
    FieldInfo info;
    ExprPtr expr;
    bool named = false; ///< named by an alias or a field; false for "Expr1000"
    QString qualifier;  ///< for a plain field: the name of its source in the statement
};

struct OrderKey
{
    ExprPtr expr;
    bool descending = false;
    int output = -1; ///< index of the output column with this expression, or -1
};

struct Select
{
    std::vector<std::unique_ptr<Source>> sources;
    std::vector<JoinTreePtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    bool aggregated = false; ///< has GROUP BY or an aggregate
    bool distinct = false;
    bool commaJoin = false;
    /// DISTINCTROW if some sources contribute no output column: the result has one row per combination of rows of these
    /// sources.
    std::vector<const Source *> rowSources;
    std::optional<Top> top;
    std::vector<OutputColumn> columns;
    std::vector<OrderKey> order;
};

struct QueryPart
{
    std::shared_ptr<Select> select;
    QueryPtr nested;
    bool all = false;
};

struct Query
{
    int depth = 1;   ///< depth of all that is in it, including queries in FROM
    qint64 size = 1; ///< likewise
    std::vector<QueryPart> parts;
    std::vector<OrderKey> order;       ///< for a union: output columns only
    std::vector<OutputColumn> columns; ///< for a union: the merged columns, without expressions

    bool isUnion() const { return parts.size() > 1; }
    const Select *singleSelect() const { return isUnion() ? nullptr : parts.front().select.get(); }
    const std::vector<OutputColumn> &output() const
    {
        const Select *select = singleSelect();
        return select ? select->columns : columns;
    }
};

/// A cross table: one row per group of the row headings, one column per value of the pivot expression. With fixed
/// headings the select has all columns; otherwise only the row headings, and `cell` is the expression under each
/// heading.
struct Transform
{
    std::shared_ptr<Select> select;
    ExprPtr pivot;
    ExprPtr cell;
};

struct AssignedField
{
    const Source *source; ///< null for INSERT
    int field;
    ExprPtr value;
};

struct Insert
{
    const TableInfo *table;
    std::vector<int> fields;
    std::vector<ExprPtr> values;    ///< for INSERT ... VALUES
    std::shared_ptr<Query> query;   ///< for INSERT ... SELECT: one output column per field
    std::vector<ExprPtr> converted; ///< the columns of `rows` converted to the types of the fields
    std::unique_ptr<Source> rows;
};

/// How UPDATE treats rows in which an outer join has no row of an updated table.
struct AbsentRows
{
    const Source *target;
    bool added; ///< they are inserted with the assigned values; false: the statement is refused
    std::vector<AssignedField> defaults; ///< for fields whose default SQLite cannot evaluate
    Range place;                         ///< place of the first assigned field
    QString hint;
};

struct Update
{
    std::shared_ptr<Select> select; ///< sources and condition
    std::vector<AssignedField> fields;
    std::vector<AbsentRows> absent;
};

struct Delete
{
    std::shared_ptr<Select> select;
    const Source *deleteTarget;
};

/// Visits the direct operands of a node, in order. Subqueries are not entered.
template <typename Node, typename Visit>
void forEachOperand(const Node &node, const Visit &visit)
{
    const auto visitAll = [&visit](const std::vector<ExprPtr> &list) {
        for (const ExprPtr &expr : list)
            visit(expr);
    };
    if constexpr (requires { node.operand; })
        visit(node.operand);
    if constexpr (requires { node.left; })
        visit(node.left), visit(node.right);
    if constexpr (requires { node.low; })
        visit(node.low), visit(node.high);
    if constexpr (requires { node.terms; })
        visitAll(node.terms);
    if constexpr (requires { node.items; })
        visitAll(node.items);
    if constexpr (requires { node.arguments; })
        visitAll(node.arguments);
    if constexpr (std::is_same_v<Node, Like>)
        visit(node.text), visit(node.pattern);
    if constexpr (std::is_same_v<Node, Coalesce>)
        visit(node.value), visit(node.instead);
    if constexpr (std::is_same_v<Node, Case>) {
        for (const When &branch : node.branches)
            visit(branch.condition), visit(branch.value);
        if (node.otherwise)
            visit(node.otherwise);
    }
    if constexpr (std::is_same_v<Node, Aggregate>) {
        if (node.argument)
            visit(node.argument);
        if (node.filter)
            visit(node.filter);
    }
}
/// Visits the direct operands of an expression.
void forEachChild(const Expr &expr, const std::function<void(const ExprPtr &)> &visit);
/// The subquery of an expression, or null.
const Query *subqueryOf(const Expr &expr);
/// For each source the fields that joins equate with fields of another source.
QHash<const Source *, QSet<int>> joinedFields(const Select &select);
/// True if the query contains another query, in FROM or in an expression.
bool nests(const Query &query);
/// True if the query does not refer to an outer query.
bool isUncorrelated(const Query &query);
/// Visits the expressions of all clauses of a query and of the queries in its FROM.
void forEachExpr(const Query &query, const std::function<void(const Expr &)> &visit);
/// True if the expression, or a part of it outside of subqueries, satisfies the test.
bool anyPart(const Expr &expr, const std::function<bool(const Expr &)> &test);
/// True if the expression, or a part of it outside of subqueries, is an aggregate.
bool hasAggregate(const Expr &expr);
/// True if the expression, or a part of it, is a subquery.
bool hasSubquery(const Expr &expr);
/// True if the expression contains a subquery or a domain function: its value depends on rows other than the current
/// one.
bool readsRows(const Expr &expr);
/// True for equal expressions over the same sources. Subqueries are equal only if they are the same tree.
bool sameExpr(const Expr &left, const Expr &right);

} // namespace dao::sql::bound

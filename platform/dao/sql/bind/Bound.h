#pragma once
#include "../FunctionTable.h"

#include <dao/sql/ast/Statement.h>
#include <dao/values/Schema.h>

#include <functional>
#include <memory>
#include <QHash>
#include <QSet>

namespace dao::sql::bound {

using ast::BinaryOp;
using ast::JoinKind;
using ast::Range;
using ast::Top;

struct Expr;
struct Query;
struct Select;
/// Bound expressions never change once made, so they are shared: an alias used twice is one tree with two owners.
using ExprPtr = std::shared_ptr<const Expr>;
using QueryPtr = std::shared_ptr<const Query>;

/// What rows come from: a base table, or a query that could not be melted into the one around it.
struct Source
{
    int number = 0;                   ///< unique in the statement
    QString name;                     ///< as the user calls it
    const TableInfo *table = nullptr; ///< null for a nested query
    QueryPtr query;
    bool nullable = false; ///< on the null-supplied side of an outer join
};

struct Literal
{
    Value value;
};
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
/// + of two texts: Null when one is Null.
struct JoinText
{
    std::vector<ExprPtr> terms;
};
/// + of operands of which only the values can tell whether they are numbers.
struct AddAny
{
    ExprPtr left;
    ExprPtr right;
};
/// &: Null counts as nothing.
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
struct Chain
{
    bool isAnd;
    std::vector<ExprPtr> terms;
};
struct Between
{
    ExprPtr operand;
    ExprPtr low;
    ExprPtr high;
    bool negated;
};
struct InList
{
    ExprPtr operand;
    std::vector<ExprPtr> items;
    bool negated;
};
struct InQuery
{
    ExprPtr operand;
    QueryPtr query;
    bool negated;
};
struct IsNull
{
    ExprPtr operand;
    bool negated;
};
struct Exists
{
    QueryPtr query;
};
struct Quantified
{
    BinaryOp op;
    ExprPtr operand;
    bool all;
    QueryPtr query;
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
    /// The rows' sources; First and Last go by the order of their keys.
    std::vector<const Source *> order;
    ExprPtr filter; ///< only rows for which it holds; null: all
    /// A source of the query whose rows it runs over, where the argument names none; null when that query has none.
    const Source *own = nullptr;
    /// The argument may name fields of a query around it alone, which would make it that query's to the inner engine.
    bool namesOuter = false;
};
/// Equal, Null being equal to Null.
struct Same
{
    ExprPtr left;
    ExprPtr right;
};
/// The value of a cross table's heading: as inner SQL, or empty when it is only known once the table is run.
struct Heading
{
    QString value;
};
/// A domain function whose texts are only known when a row is read; run through the engine again.
struct DomainCall
{
    const FunctionInfo *function;
    std::vector<ExprPtr> arguments;
};

enum class Conversion {
    ToText,   ///< as CStr, after the type of the operand
    ToNumber, ///< numeric text becomes a number; other text is a mismatch
    ToDate,
    ToTruth, ///< a number or numeric text as a condition
    Assign,  ///< as an assignment to a field of the node's type converts
    Fit      ///< a text that goes into a field of a size
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
    Range place; ///< the same in the user's text: of what stands in a stored query, where that is named
    DataType type = DataType::Unknown; ///< Unknown: Null, or known only from the value
    /// Columns, literals and declared parameters: their type counts as it stands. The rest are converted by content.
    bool firm = false;
    int depth = 1;
    /// Nodes of the tree, those of shared parts as often as they stand in it: what the text of it will be long.
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

struct From;
using FromPtr = std::shared_ptr<const From>;
/// A source, or a join of two.
struct From
{
    const Source *source = nullptr;
    JoinKind kind = JoinKind::Inner;
    FromPtr left;
    FromPtr right;
    ExprPtr on; ///< null: every row with every row
};

struct OutputColumn
{
    FieldInfo info;
    ExprPtr expr;
    bool named = false; ///< by an alias or a field; not "Expr1000"
    QString qualifier;  ///< of a plain field: its source as the user calls it
};

struct OrderKey
{
    ExprPtr expr;
    bool descending = false;
    int output = -1; ///< the output column that it is, when it is one
};

struct Select
{
    std::vector<std::unique_ptr<Source>> sources;
    std::vector<FromPtr> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    bool aggregated = false; ///< GROUP BY, or an aggregate
    bool distinct = false;
    bool commaJoin = false;
    /// DISTINCTROW with sources that contribute no output: one row for each combination of these.
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
    int depth = 1;   ///< of all that is in it, queries in FROM included
    qint64 size = 1; ///< likewise
    std::vector<QueryPart> parts;
    std::vector<OrderKey> order;       ///< of a union: output columns only
    std::vector<OutputColumn> columns; ///< of a union: the merged ones, without expressions

    bool isUnion() const { return parts.size() > 1; }
    const Select *singleSelect() const { return isUnion() ? nullptr : parts.front().select.get(); }
    const std::vector<OutputColumn> &output() const
    {
        const Select *select = singleSelect();
        return select ? select->columns : columns;
    }
};

/// A cross table: one row for each group of the row heads, one column for each value of the pivot. With fixed headings
/// the select has all of its columns; else only the row heads, and `cell` is what stands under every heading.
struct Transform
{
    std::shared_ptr<Select> select;
    ExprPtr pivot;
    ExprPtr cell;
};

struct AssignedField
{
    const Source *source; ///< null in an INSERT
    int field;
    ExprPtr value;
};

struct Insert
{
    const TableInfo *table;
    std::vector<int> fields;
    std::vector<ExprPtr> values;    ///< of VALUES
    std::shared_ptr<Query> query;   ///< or the rows of a query, one output a field ...
    std::vector<ExprPtr> converted; ///< ... as the fields need them, in terms of `rows`
    std::unique_ptr<Source> rows;
};

/// What becomes of rows in which an outer join has no row of a table that is to be changed.
struct AbsentRows
{
    const Source *target;
    bool added; ///< they are made of what is assigned to the table; else the statement is refused
    std::vector<AssignedField> defaults; ///< of fields that the file cannot fill by itself
    Range place;                         ///< of the first field that is assigned
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

/// The parts of an expression, in order. Subqueries are not entered.
void forEachChild(const Expr &expr, const std::function<void(const ExprPtr &)> &visit);
/// The subquery of an expression, or null.
const Query *subqueryOf(const Expr &expr);
/// For each table, its fields that the joins of a select equate with a field of another one.
QHash<const Source *, QSet<int>> joinedFields(const Select &select);
/// True when there is a query within the query, in FROM or in an expression.
bool nests(const Query &query);
/// True when nothing in the query names a source of a query around it.
bool standsAlone(const Query &query);
/// The expressions of all clauses of a query and of the sources in its FROM.
void forEachExpr(const Query &query, const std::function<void(const Expr &)> &visit);
/// True when the expression, or a part of it outside subqueries, satisfies the test.
bool anyPart(const Expr &expr, const std::function<bool(const Expr &)> &test);
/// True when the expression, or a part of it outside subqueries, is an aggregate.
bool hasAggregate(const Expr &expr);
/// Likewise, a subquery.
bool hasSubquery(const Expr &expr);
/// Likewise, a subquery or a domain function: its value depends on rows other than the current one.
bool readsRows(const Expr &expr);
/// The same expression over the same sources. Subqueries are the same only when they are one tree.
bool sameExpr(const Expr &left, const Expr &right);

} // namespace dao::sql::bound

#pragma once
#include "Token.h"

#include <dao/values/Value.h>
#include <memory>
#include <variant>
#include <vector>

namespace dao::sql::ast {

struct Expr;
struct Query;
using ExprPtr = std::unique_ptr<Expr>;
using QueryPtr = std::unique_ptr<Query>;

enum class UnaryOp { Minus, Plus, Not };

enum class BinaryOp {
    Power,
    Multiply,
    Divide,
    IntegerDivide,
    Mod,
    Add,
    Subtract,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Like,
    ALike,
    Xor,
    Eqv,
    Imp
};

struct Literal
{
    Value value;
};

/// A column, an alias or a parameter; the binder decides. A name of more than two parts is always a parameter.
struct Name
{
    QStringList parts;
    QString text; ///< as written, without brackets: "t.f", "Forms!F!C"
};

struct Unary
{
    UnaryOp op;
    ExprPtr operand;
};

struct Binary
{
    BinaryOp op;
    ExprPtr left;
    ExprPtr right;
};

/// "a And b And c ...", or the same with Or. One node with many terms, so that thousands of terms do not make a deep
/// tree.
struct Chain
{
    bool isAnd;
    std::vector<ExprPtr> terms;
};

struct Call
{
    QString name;
    std::vector<ExprPtr> arguments;
    bool star = false; ///< Count(*)
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

/// x > ANY (SELECT ...), x > ALL (SELECT ...)
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
};

/// The field as left operand where a validation rule omits it.
struct ImpliedField
{
};

/// A node of an expression. The parser limits the depth of the tree, so recursive functions cannot overflow the stack.
struct Expr
{
    Range range;
    int depth = 1;
    std::variant<Literal, Name, Unary, Binary, Chain, Call, Between, InList, InQuery, IsNull, Exists, Quantified,
                 ScalarQuery, ImpliedField>
        node;

    template <typename T>
    const T *as() const
    {
        return std::get_if<T>(&node);
    }
};

} // namespace dao::sql::ast

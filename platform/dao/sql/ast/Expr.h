#pragma once
#include "Shapes.h"
#include "Token.h"

#include <memory>
#include <memory_resource>
#include <variant>
#include <vector>

namespace dao::sql::ast {

struct Expr;
struct Query;
/// Destroys a node. Its memory belongs to the tree.
struct ExprDeleter
{
    void operator()(Expr *expr) const;
};
using ExprPtr = std::unique_ptr<Expr, ExprDeleter>;
/// The memory of the nodes of a tree, which is freed as a whole: allocating each node took a fifth of the time of
/// parsing.
using ExprMemory = std::pmr::monotonic_buffer_resource;
using QueryPtr = std::unique_ptr<Query>;

enum class UnaryOp { Minus, Plus, Not };

using Nodes = Shapes<ExprPtr, QueryPtr>;
using Literal = Nodes::Literal;
using Chain = Nodes::Chain;
using Between = Nodes::Between;
using InList = Nodes::InList;
using InQuery = Nodes::InQuery;
using IsNull = Nodes::IsNull;
using Exists = Nodes::Exists;
using Quantified = Nodes::Quantified;

/// A column, an alias or a parameter; the binder decides. A name of more than two parts is always a parameter.
struct Name
{
    QString text;      ///< as written, without brackets: "t.f", "Forms!F!C"
    QStringList parts; ///< empty if the name has one part

    bool isSimple() const { return parts.isEmpty(); }
    const QString &last() const { return parts.isEmpty() ? text : parts.constLast(); }
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

struct Call
{
    QString name;
    std::vector<ExprPtr> arguments;
    bool star = false; ///< Count(*)
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

inline void ExprDeleter::operator()(Expr *expr) const
{
    std::destroy_at(expr);
}

} // namespace dao::sql::ast

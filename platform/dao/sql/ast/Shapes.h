#pragma once
#include <dao/values/Value.h>
#include <vector>

namespace dao::sql {

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

/// The nodes that have the same parts in the syntax tree and in the bound tree. Only the pointers differ: a syntax tree
/// owns its nodes, bound nodes are immutable and can be shared.
template <typename ExprPtr, typename QueryPtr>
struct Shapes
{
    struct Literal
    {
        Value value;
    };

    /// "a And b And c ...", or the same with Or. One node with many terms, so that thousands of terms do not make a
    /// deep tree.
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

    /// x > ANY (SELECT ...), x > ALL (SELECT ...)
    struct Quantified
    {
        BinaryOp op;
        ExprPtr operand;
        bool all;
        QueryPtr query;
    };
};

} // namespace dao::sql

#pragma once
#include "Keywords.h"
#include "Statement.h"

namespace dao::sql::ast {

/// Binding strength of the dialect's operators, weakest first: an operand that binds less than its place asks for
/// stands in parentheses.
enum class Rank {
    Lowest,
    Imp,
    Eqv,
    Xor,
    Or,
    And,
    Not,
    Comparison,
    Concatenation,
    Sum,
    Mod,
    IntegerDivision,
    Product,
    Sign,
    Power,
    Primary
};

Rank rankOf(BinaryOp op);
Rank rankOf(const Expr &expr);
QStringView operatorText(BinaryOp op);
/// In brackets, or between grave accents, unless it can stand alone wherever a name can.
QString nameText(const QString &name);
/// A name of several parts, with the dots and bangs between them.
QString nameText(const Name &name);
QString literalText(const Value &value);
QString typeText(DataType type, bool autoIncrement);

} // namespace dao::sql::ast

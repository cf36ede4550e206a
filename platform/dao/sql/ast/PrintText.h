#pragma once
#include "Keywords.h"
#include "Statement.h"

namespace dao::sql::ast {

/// Precedence of the dialect's operators, lowest first. An operand with a lower rank than its place requires is put in
/// parentheses.
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
/// The name in brackets, or in grave accents, unless it is a valid name without them.
QString nameText(const QString &name);
/// A qualified name, with the dots and exclamation marks between its parts.
QString nameText(const Name &name);
QString literalText(const Value &value);
QString typeText(DataType type, bool autoIncrement);

} // namespace dao::sql::ast

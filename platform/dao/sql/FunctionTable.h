#pragma once
#include <dao/values/DataType.h>

#include <QList>
#include <QString>
#include <span>

namespace dao::sql {

/// What the type of a function's result follows from.
enum class ResultRule {
    Fixed,       ///< FunctionInfo::result
    FirstNumber, ///< the type of the first argument, when it is a number; else Double
    FirstAny,    ///< the type of the first argument
    Common       ///< the common type of the values (IIf, Switch, Choose, Nz)
};

enum class FunctionKind {
    Plain,     ///< a function of the inner engine of the same name, with our prefix
    Typed,     ///< the same, with the type number of the first argument as an additional first argument
    Moment,    ///< without a value of its own for each row: evaluated once for a statement
    Special,   ///< lowered by the binder to conditions of the inner engine
    Aggregate, ///< over the rows of a group
    Domain     ///< DLookup and its family: a query written as texts
};

/// A function of expressions. Overloads stand as several entries of one name.
struct FunctionInfo
{
    const char16_t *name;
    /// One letter an argument: t text, n number, d date, b condition, a anything; after '?' they may be left out; '*'
    /// repeats the letter before it.
    const char16_t *parameters;
    ResultRule rule;
    DataType result;
    FunctionKind kind;
    const char16_t *signature; ///< for the user: "Left(text, length)"
    const char16_t *help;      ///< one sentence

    int minArguments() const;
    int maxArguments() const; ///< -1: any number
    /// Letter of the argument at that place.
    char16_t parameterAt(int index) const;
};

/// Every function of the dialect, in the order of families.
std::span<const FunctionInfo> functionTable();

/// All entries of a name, without regard to case; "Left$" is found as "Left".
QList<const FunctionInfo *> functionsNamed(QStringView name);
QStringList functionNames();

} // namespace dao::sql

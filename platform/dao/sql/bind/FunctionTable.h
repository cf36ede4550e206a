#pragma once
#include <dao/values/DataType.h>

#include <QList>
#include <QString>
#include <span>

namespace dao::sql::bound {

/// Determines the type of a function's result.
enum class ResultRule {
    Fixed,       ///< FunctionInfo::result
    FirstNumber, ///< the type of the first argument if it is a number, else Double
    FirstAny,    ///< the type of the first argument
    Common       ///< the common type of the values (IIf, Switch, Choose, Nz)
};

enum class FunctionKind {
    Plain,     ///< an SQLite function with the same name and the prefix "jet_"
    Typed,     ///< as Plain, with the type number of the first argument as additional first argument
    Moment,    ///< evaluated once per statement: Date, Time, Now
    Special,   ///< translated by the binder to SQLite expressions
    Aggregate, ///< over the rows of a group
    Domain     ///< DLookup and the like: a query whose parts are texts
};

/// A function for expressions. Overloads are successive entries with the same name.
struct FunctionInfo
{
    const char16_t *name;
    /// One letter per argument: t text, n number, d date, b condition, a any. Arguments after '?' are optional; '*'
    /// repeats the letter before it.
    const char16_t *parameters;
    ResultRule rule;
    DataType result;
    FunctionKind kind;
    const char16_t *signature; ///< for the user: "Left(text, length)"
    const char16_t *help;      ///< one sentence

    int minArguments() const;
    int maxArguments() const; ///< -1: any number
    /// The letter of the argument at that index.
    char16_t parameterAt(int index) const;
};

/// All functions of the dialect, grouped by family.
std::span<const FunctionInfo> functionTable();

/// All entries with that name, without regard to case; "Left$" finds "Left".
std::span<const FunctionInfo> functionsNamed(QStringView name);
QStringList functionNames();

} // namespace dao::sql::bound

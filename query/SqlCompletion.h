#pragma once
#include "SqlWords.h"

namespace query {

/// One entry of a completion list.
struct Completion
{
    enum class Kind { Field, Alias, Table, Query, Function, Macro, Keyword };
    QString text;   ///< inserted; in brackets where necessary
    QString detail; ///< type of a field, arguments of a function, value of a macro
    Kind kind = Kind::Keyword;
    bool operator==(const Completion &) const = default;
};

struct CompletionList
{
    int start = 0; ///< where the word begins that a completion replaces up to the cursor
    QList<Completion> items;
};

/// What can stand at the cursor and begins with the word before it: after "t." the fields of t, after FROM tables and
/// queries, in a bracket macros and names, elsewhere fields of the statement's sources, aliases, functions, keywords.
/// Nothing inside a text or date.
CompletionList completionsAt(const QString &text, int cursor, const SqlNames &names);

/// The call in whose arguments the cursor stands, as "Left(text, length)" and its meaning, one line for each form of
/// the function; empty outside of calls.
QStringList callAt(const QString &text, int cursor);

} // namespace query

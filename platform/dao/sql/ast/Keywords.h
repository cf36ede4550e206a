#pragma once
#include <dao/values/DataType.h>

#include <optional>
#include <QStringView>

namespace dao::sql::ast {

/// The words with a meaning in the grammar. Any of them is a plain name where the grammar cannot use it as a word.
enum class Keyword {
    None,
    Action,
    Add,
    All,
    ALike,
    Alter,
    And,
    Any,
    As,
    Asc,
    Between,
    By,
    Cascade,
    Check,
    Column,
    Comp,
    Compression,
    Constraint,
    Create,
    Default,
    Delete,
    Desc,
    Disallow,
    Distinct,
    DistinctRow,
    Drop,
    Eqv,
    Exec,
    Execute,
    Exists,
    False,
    Foreign,
    From,
    Group,
    Having,
    Identity,
    Ignore,
    Imp,
    In,
    Index,
    Inner,
    Insert,
    Into,
    Is,
    Join,
    Key,
    Left,
    Like,
    Mod,
    No,
    Not,
    Null,
    Off,
    On,
    Option,
    Or,
    Order,
    Outer,
    OwnerAccess,
    Parameters,
    Percent,
    Pivot,
    Primary,
    Procedure,
    References,
    Right,
    Select,
    Set,
    Some,
    Table,
    Temporary,
    Top,
    Transform,
    True,
    Union,
    Unique,
    Update,
    Values,
    View,
    Where,
    With,
    Xor,
    Yes
};

/// The keyword of a bare word, without regard to case; None when it is none.
Keyword keywordOf(QStringView word);

/// Words that end an expression or a list: where one of them stands, no operand can begin.
bool endsExpression(Keyword keyword);
/// Words that cannot be an alias written without AS.
bool endsTableName(Keyword keyword);

/// A type name of PARAMETERS and of field definitions, with the synonyms of the dialect.
struct TypeName
{
    DataType type = DataType::Unknown;
    bool autoIncrement = false;
};
std::optional<TypeName> typeNameOf(QStringView word);

} // namespace dao::sql::ast

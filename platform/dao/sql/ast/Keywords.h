#pragma once
#include <dao/values/DataType.h>

#include <optional>
#include <QStringView>

namespace dao::sql::ast {

/// The keywords of the grammar. Each of them is an ordinary name where the grammar does not allow the keyword.
enum class Keyword : quint8 {
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

/// The keyword for a word without brackets, without regard to case; None if it is not a keyword.
Keyword keywordOf(QStringView word);

/// True for keywords that end an expression or a list: no operand can start with them.
bool endsExpression(Keyword keyword);
/// True for keywords that cannot be an alias without AS.
bool endsTableName(Keyword keyword);

/// A type name in PARAMETERS and in field definitions, including the synonyms of the dialect.
struct TypeName
{
    DataType type = DataType::Unknown;
    bool autoIncrement = false;
};
std::optional<TypeName> typeNameOf(QStringView word);

} // namespace dao::sql::ast

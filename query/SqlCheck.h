#pragma once
#include "Statements.h"

#include <dao/sql/plan/Compiled.h>
#include <dao/values/DaoException.h>
#include <optional>

namespace dao {
class Database;
}

namespace query {

/// What the compiler says about a text that is being written. Nothing is run.
struct SqlCheck
{
    /// The first error and its place.
    struct Error
    {
        QString text;
        TextPart part;
    };
    std::optional<Error> error;
    /// In a text without errors, the first place where a column stands on both sides of a comparison.
    std::optional<Error> remark;
    QList<dao::sql::Parameter> parameters; ///< of all statements, in order, each name once

    static SqlCheck of(const dao::Database &database, const QString &text);
};

/// The place of an error in the text; at the end of the text, its last character.
TextPart partOf(const dao::SourceRange &where, const QString &text);

} // namespace query

#include "SqlCheck.h"

#include <dao/Database.h>
#include <dao/sql/Compiler.h>
#include <dao/values/Errors.h>

namespace query {

TextPart partOf(const dao::SourceRange &where, const QString &text)
{
    if (!where.isValid() || text.isEmpty())
        return {};
    const int start = std::clamp(where.start, 0, int(text.size()) - 1);
    return {start, std::clamp(where.length, 1, int(text.size()) - start)};
}

SqlCheck SqlCheck::of(const dao::Database &database, const QString &text)
{
    SqlCheck check;
    for (const TextPart &part : statementsIn(text)) {
        try {
            const dao::sql::CompiledStatement compiled =
                dao::sql::compile(database.schema(), statementInPlace(text, part));
            for (const dao::sql::Parameter &parameter : compiled.parameters) {
                const bool isKnown = std::ranges::any_of(check.parameters, [&](const dao::sql::Parameter &known) {
                    return known.name.compare(parameter.name, Qt::CaseInsensitive) == 0;
                });
                if (!isKnown)
                    check.parameters.append(parameter);
            }
        } catch (const dao::DaoException &exception) {
            // The columns of a cross table as a source depend on its data, which is not read here.
            const bool needsData = exception.number() == dao::error::SyntaxInTransform;
            if (!needsData) {
                check.error = Error{exception.details(), partOf(exception.where(), text)};
                return check;
            }
        }
    }
    return check;
}

} // namespace query

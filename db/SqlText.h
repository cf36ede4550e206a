#pragma once
#include <dao/Database.h>
#include <tarnwick/Format.h>

namespace db {

/// Throws an engine exception (3075) if a text argument contains a single quote.
void refuseQuotes(std::span<const tarnwick::FormatArg> arguments);

/// Builds SQL from a template ("... WHERE name = '%S' AND sec = %d"). All SQL with inserted texts is built here. Texts
/// are inserted unchanged; a text with a single quote would change the statement, so it is refused with an engine
/// exception.
template <typename... Args>
QString sqlText(QStringView sqlTemplate, const Args &...args)
{
    const tarnwick::FormatArg list[] = {tarnwick::FormatArg(args)..., tarnwick::FormatArg(0)};
    const std::span<const tarnwick::FormatArg> used(list, sizeof...(Args));
    refuseQuotes(used);
    return tarnwick::formatArgs(sqlTemplate, used);
}

/// Executes an action query as a temporary unnamed query definition with fail-on-error. Returns the rows affected.
int executeSql(dao::Database &database, const QString &sql);

/// The first field of the first row of a select statement; Null if there are no rows.
dao::Value firstValue(dao::Database &database, const QString &sql);

} // namespace db

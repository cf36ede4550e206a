#pragma once
#include <dao/Database.h>
#include <tarnwick/Format.h>

namespace db {

/// Throws an engine exception (3075) when a text argument holds a single quote.
void refuseQuotes(std::span<const tarnwick::FormatArg> arguments);

/// The one way to build SQL from a template ("... WHERE name = '%S' AND sec = %d"). Texts go in as they are, so one
/// that holds a single quote, which would change the statement, is refused with an engine exception.
template <typename... Args>
QString sqlText(QStringView sqlTemplate, const Args &...args)
{
    const tarnwick::FormatArg list[] = {tarnwick::FormatArg(args)..., tarnwick::FormatArg(0)};
    const std::span<const tarnwick::FormatArg> used(list, sizeof...(Args));
    refuseQuotes(used);
    return tarnwick::formatArgs(sqlTemplate, used);
}

/// Runs an action as a temporary unnamed query definition, fail-on-error; returns the rows affected.
int executeSql(dao::Database &database, const QString &sql);

/// The first field of the first row of a select statement; Null without rows.
dao::Value firstValue(dao::Database &database, const QString &sql);

} // namespace db

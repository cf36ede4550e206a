#pragma once
#include <db/ConnectDatabase.h>

namespace db {

/// Connects a project's database as the program knows them all: one of the present schema, whose views and aliases are
/// brought up to date; an older one, which is converted when the user agrees; one of the foreign inspection data
/// system, whose tables are imported; or a Jet file, of which a working copy is opened that can only be read, unless
/// the user agrees to have the file converted. See db::connectDatabase() for the rest. The context's opener is not
/// used.
bool connectProjectDatabase(DatabaseSession &session, const QString &path, const ConnectContext &context);

/// The same for the database that a project starts with; see db::connectAtStart().
bool connectProjectAtStart(DatabaseSession &session, const QStringList &recentDatabases, int formatYear,
                           const ConnectContext &context);

} // namespace db
